#include "dati/import/Import.h"

#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "dati/import/FinanceImport.h"
#include "host/commands/Command.h"
#include "host/commands/ImportProblems.h"
#include "host/environment/Errors.h"
#include "host/environment/Selection.h"

namespace bukorval::host {
namespace {

struct ImportOptions {
  std::vector<std::string> files;  ///< by the position of their kind, "" for none
  std::string finance;
};

void tell(const std::vector<std::string>& outcomes) {
  for (const auto& outcome : outcomes) std::cout << "Imported " << outcome << '\n';
}

void importFiles(Environment& environment, const ImportOptions& options) {
  const auto& connection = environment.connection();
  dati::Import import(connection, environment.session(),
                      [&environment]() -> CLSKORVAL& { return environment.budget(); });
  for (std::size_t i = 0; i < options.files.size(); ++i) {
    if (options.files[i].empty()) continue;
    const auto& kind = dati::fileKinds()[i];
    if (kind.needsBudget) requireBudget(environment);
    import.read(kind, options.files[i]);
  }
  if (import.empty()) throw UsageError("Nothing to import: give at least one file");
  refuseProblems(import.problems());
  tell(import.write());
}

void importFinance(Environment& environment, const std::string& folder) {
  dati::Problems problems;
  const auto finance = dati::readFinanceFolder(folder, problems);
  refuseProblems(problems);
  const auto& connection = environment.connection();
  try {
    tell(dati::importFinance(environment.budget(), *connection, environment.session(), finance));
  } catch (const dati::CompanyNotEmpty& e) {
    throw dati::Refused(std::string(e.what()) + " with `bukorval create`");
  }
}

void import(Environment& environment, const ImportOptions& options) {
  if (options.finance.empty()) return importFiles(environment, options);
  for (const auto& file : options.files) {
    if (!file.empty()) throw UsageError("--finance stands alone: import other files afterwards");
  }
  importFinance(environment, options.finance);
}

std::vector<Option> declareFiles(ImportOptions& options) {
  const auto kinds = dati::fileKinds();
  options.files.resize(kinds.size());
  std::vector<Option> declared;
  for (std::size_t i = 0; i < kinds.size(); ++i)
    declared.push_back({.flags = "--" + std::string(kinds[i].name),
                        .help = kinds[i].columns,
                        .target = &options.files[i],
                        .valueName = "FILE"});
  declared.push_back({.flags = "--finance",
                      .help =
                          "folder with amounts.csv, accounts.csv, sites.csv, departments.csv: monthly amounts become "
                          "cards of budget type 4 per site, and movements",
                      .target = &options.finance,
                      .valueName = "DIR"});
  return declared;
}

}  // namespace

Command importCommand() {
  const auto options = std::make_shared<ImportOptions>();
  return {"import", "Import accounts, sites, definitions, movements and values from CSV",
          "  bukorval import -d acme.db --accounts accounts.csv --sites sites.csv\n"
          "  bukorval import -d acme.db --values plan.csv -t 4 -s 01 -y 2025\n"
          "Each file has a header line; columns may stand in any order, optional ones may be missing. Every file is\n"
          "checked first: problems are listed with their line numbers, and then nothing at all is imported.",
          declareFiles(*options), [options](Environment& environment) { import(environment, *options); }};
}

}  // namespace bukorval::host
