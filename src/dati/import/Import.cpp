#include "dati/import/Import.h"

#include <utility>

#include "dati/Failure.h"
#include "frame/Transazione.h"
#include "values/Conversion.h"

namespace bukorval::dati {

ImportContext::ImportContext(ado::ConnectionPtr connectionToUse, const suite::ActiveInterface& session,
                             std::function<CLSKORVAL&()> budgetToUse)
    : connection(std::move(connectionToUse)),
      budget(std::move(budgetToUse)),
      ledger(*connection, session.CodiceDitta(), session.CodicePdcCoGe()) {}

bool ImportContext::hasAccount(const std::string& account) {
  if (accounts.contains(account) || knownAccounts_.contains(account)) return true;
  if (!ledger.hasAccount(account)) return false;
  knownAccounts_.insert(account);
  return true;
}

bool ImportContext::hasSite(const values::Variant& site) {
  const int code = values::toInt32(site);
  if (sites.contains(code) || knownSites_.contains(code)) return true;
  if (!ledger.hasSite(site)) return false;
  knownSites_.insert(code);
  return true;
}

Import::Import(ado::ConnectionPtr connection, const suite::ActiveInterface& session, std::function<CLSKORVAL&()> budget)
    : context_(std::move(connection), session, std::move(budget)) {}

Import::~Import() = default;

void Import::read(const FileKind& kind, const std::string& file) {
  files_.push_back(kind.create());
  files_.back()->read(file, context_);
}

std::vector<std::string> Import::write() {
  if (problems().count() > 0) throw Refused("The files have problems, nothing was imported");
  Transazione transaction(*context_.connection);
  for (const auto& file : files_) file->write(context_);
  transaction.conferma();
  std::vector<std::string> outcomes;
  for (const auto& file : files_) outcomes.push_back(file->outcome());
  return outcomes;
}

std::span<const FileKind> fileKinds() {
  static const std::vector<FileKind> kKinds{accountsFile(), sitesFile(), definitionsFile(), movementsFile(),
                                            valuesFile()};
  return kKinds;
}

std::string counted(std::size_t number, const std::string& noun) {
  return std::to_string(number) + " " + noun + (number == 1 ? "" : "s");
}

}  // namespace bukorval::dati
