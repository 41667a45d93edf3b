#include "dati/import/Import.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dati/import/FinanceImport.h"
#include "host/commands/Command.h"
#include "host/commands/ImportProblems.h"
#include "host/commands/ImportSheet.h"
#include "host/environment/Errors.h"
#include "host/environment/ProgressBar.h"
#include "host/environment/Selection.h"
#include "host/environment/Terminal.h"
#include "language/Language.h"
#include "values/Text.h"

namespace bukorval::host {
namespace {

struct FilesToImport {
  std::vector<std::string> files;  ///< by the position of their kind, "" for none
  std::string finance, sheet;
  bool dryRun = false;
  dati::ImportOptions how;
};

/// Shows the long steps of an import where somebody sees them.
class Watcher : public dati::ImportProgress {
 public:
  void begin(std::string_view description, std::int64_t steps) override { bar_.begin(description, steps); }
  void step(std::int64_t done) override { bar_.step(done); }
  void end() override { bar_.end(); }

 private:
  ProgressBar bar_{std::chrono::milliseconds(500)};
};

std::string encodingList() {
  std::string list;
  for (const auto encoding : dati::encodings()) list += (list.empty() ? "" : ", ") + std::string(encoding);
  return list;
}

/// Options by which the same files may be imported after all.
std::string remedies(const dati::Problems& problems) {
  std::string text;
  if (problems.has(dati::Remedy::Encoding))
    text += "\n" + tr("--encoding NAME reads files in another encoding: {}", encodingList());
  if (problems.has(dati::Remedy::Replace)) text += "\n" + tr("--replace puts the new registrations in place of those");
  return text;
}

void tell(const std::vector<std::string>& outcomes) {
  for (const auto& outcome : outcomes) std::cout << tr("Imported {}", outcome) << '\n';
}

void importFiles(Environment& environment, const FilesToImport& options) {
  const auto& connection = environment.connection();
  dati::Import import(
      connection, environment.session(), [&environment]() -> CLSKORVAL& { return environment.budget(); }, options.how);
  std::optional<BudgetAnno> written;
  const auto look = [&] {
    if (written) requireWritable(environment, *written);
  };
  for (std::size_t i = 0; i < options.files.size(); ++i) {
    if (options.files[i].empty()) continue;
    const auto& kind = dati::fileKinds()[i];
    if (kind.needsBudget) {
      requireBudget(environment);
      written = budgetScelto(environment.budget());
      look();
    }
    import.read(kind, options.files[i]);
  }
  if (import.empty()) throw UsageError(tr("Nothing to import: give at least one file"));
  refuseProblems(import.problems(), remedies(import.problems()));
  tell(import.write(look));
}

bool hasMovements(const FilesToImport& options) {
  for (std::size_t i = 0; i < options.files.size(); ++i)
    if (dati::fileKinds()[i].numbered && !options.files[i].empty()) return true;
  return false;
}

void importFinance(Environment& environment, const FilesToImport& options) {
  dati::Problems problems;
  const auto finance = dati::readFinanceFolder(options.finance, problems, {options.how.encoding, options.how.progress});
  refuseProblems(problems, remedies(problems));
  const auto& connection = environment.connection();
  try {
    tell(dati::importFinance(environment.budget(), *connection, environment.session(), finance, options.how.progress));
  } catch (const dati::CompanyNotEmpty& e) {
    throw dati::Refused(tr("{} with `bukorval create`", e.what()));
  }
}

void import(Environment& environment, FilesToImport& options) {
  Watcher watcher;
  options.how.author = environment.author();
  if (isTerminal(stderr)) options.how.progress = &watcher;
  if (!hasMovements(options)) {
    if (!options.how.batch.empty()) throw UsageError(tr("--batch names an import of --movements"));
    if (options.how.replace) throw UsageError(tr("--replace is for the registrations of --movements"));
  }
  if (options.dryRun && options.sheet.empty()) throw UsageError(tr("--dry-run is for --sheet"));
  if (options.finance.empty() && options.sheet.empty()) return importFiles(environment, options);
  const bool others = std::ranges::any_of(options.files, [](const auto& file) { return !file.empty(); });
  if (others || (!options.finance.empty() && !options.sheet.empty()))
    throw UsageError(tr("--finance and --sheet stand alone: import other files afterwards"));
  if (options.sheet.empty())
    importFinance(environment, options);
  else
    importSheet(environment, {options.sheet, options.how.encoding, options.dryRun}, remedies);
}

/// Why a name cannot be a batch's, "" when it can.
std::string wrongBatchName(const std::string& name) {
  constexpr std::size_t kLongest = 40;
  if (values::trim(name).empty()) return tr("a name is needed");
  return values::length(name) > kLongest ? tr("a name has at most {} characters", kLongest) : "";
}

std::vector<Option> declareFiles(FilesToImport& options) {
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
  declared.push_back({.flags = "--sheet",
                      .help = "spreadsheet or wide CSV that `export` wrote: what was changed in it goes into the cards",
                      .target = &options.sheet,
                      .valueName = "FILE"});
  declared.push_back({.flags = "--dry-run",
                      .help = "sheet: show what was changed in it, and write nothing",
                      .target = &options.dryRun});
  declared.push_back({.flags = "--batch",
                      .help = "name of this import of movements: `batches` lists it and takes it back whole",
                      .target = &options.how.batch,
                      .valueName = "NAME",
                      .check = wrongBatchName});
  declared.push_back({.flags = "--replace",
                      .help = "movements: registrations whose numbers are taken replace those",
                      .target = &options.how.replace});
  const auto encodings = dati::encodings();
  declared.push_back({.flags = "--encoding",
                      .help = "of the files",
                      .target = &options.how.encoding,
                      .showDefault = true,
                      .oneOf = {encodings.begin(), encodings.end()}});
  return declared;
}

}  // namespace

Command importCommand() {
  const auto options = std::make_shared<FilesToImport>();
  return {"import",
          "Import accounts, sites, definitions, movements and values from CSV, and sheets",
          "  bukorval import -d acme.db --accounts accounts.csv --sites sites.csv\n"
          "  bukorval import -d acme.db --values plan.csv -t 4 -s 01 -y 2025\n"
          "  bukorval import -d acme.db --sheet budget.xlsx --dry-run\n"
          "  bukorval import -d acme.db --movements march.csv --batch march --encoding windows-1252\n"
          "Each file has a header line; columns may stand in any order, optional ones may be missing. Every file is\n"
          "checked first: problems are listed with their line numbers, and then nothing at all is imported.",
          declareFiles(*options),
          [options](Environment& environment) { import(environment, *options); },
          Writes::Cards};
}

}  // namespace bukorval::host
