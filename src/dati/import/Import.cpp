#include "dati/import/Import.h"

#include <utility>

#include "dati/Failure.h"
#include "dati/Recording.h"
#include "frame/Transazione.h"
#include "language/Language.h"

namespace bukorval::dati {

ImportContext::ImportContext(ado::ConnectionPtr connectionToUse, const suite::ActiveInterface& session,
                             std::function<CLSKORVAL&()> budgetToUse, ImportOptions optionsToUse)
    : connection(std::move(connectionToUse)),
      budget(std::move(budgetToUse)),
      options(std::move(optionsToUse)),
      company(session.CodiceDitta()),
      chart(session.CodicePdcCoGe()),
      accountLevels(session.LunghezzeLivelli()),
      ledger(*connection, company, chart),
      batches(*connection, company) {}

CsvBatch ImportContext::read(const std::string& file, const CsvModel& model) {
  return readCsv(file, model, problems, {options.encoding, options.progress});
}

bool ImportContext::hasAccount(const values::Variant& account) {
  if (!knownAccounts_) knownAccounts_.emplace(ledger.accounts());
  return !accountsUnderstood || accounts.contains(account) || knownAccounts_->contains(account);
}

bool ImportContext::hasSite(const values::Variant& site) {
  if (!knownSites_) knownSites_.emplace(ledger.sites());
  return !sitesUnderstood || sites.contains(site) || knownSites_->contains(site);
}

Import::Import(ado::ConnectionPtr connection, const suite::ActiveInterface& session, std::function<CLSKORVAL&()> budget,
               ImportOptions options)
    : context_(std::move(connection), session, std::move(budget), std::move(options)) {
  refuseTakenName();
}

Import::~Import() = default;

void Import::refuseTakenName() const {
  const auto& batch = context_.options.batch;
  if (!batch.empty() && context_.batches.has(batch)) throw Refused(tr("There is an import with the name {}", batch));
}

void Import::read(const FileKind& kind, const std::string& file) {
  files_.push_back(kind.create());
  files_.back()->read(file, context_);
}

std::vector<std::string> Import::write(const std::function<void()>& look) {
  if (problems().count() > 0) throw Refused(tr("The files have problems, nothing was imported"));
  if (!context_.options.batch.empty()) context_.batches.prepare();
  Recording recording(*context_.connection, context_.company, context_.options.author);
  Transazione transaction(*context_.connection);
  refuseTakenName();
  if (look) look();
  for (const auto& file : files_) file->write(context_);
  recording.finish();
  transaction.conferma();
  std::vector<std::string> outcomes;
  for (const auto& file : files_) outcomes.push_back(file->outcome());
  return outcomes;
}

std::span<const FileKind> fileKinds() {
  static const std::vector<FileKind> kKinds{accountsFile(),    sitesFile(),     codesFile(),
                                            definitionsFile(), movementsFile(), valuesFile()};
  return kKinds;
}

std::string counted(std::size_t number, const std::string& noun) {
  return std::to_string(number) + " " + tr(number == 1 ? noun : noun + "s");
}

}  // namespace bukorval::dati
