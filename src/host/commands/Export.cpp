#include <array>
#include <fstream>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "dati/DetailNames.h"
#include "dati/Failure.h"
#include "dati/Locks.h"
#include "host/commands/Command.h"
#include "host/commands/DetailKind.h"
#include "host/environment/Errors.h"
#include "host/environment/Selection.h"
#include "host/output/Titles.h"
#include "language/Language.h"
#include "sheet/CsvFiles.h"
#include "sheet/ReplaceFile.h"
#include "sheet/XlsxWriter.h"
#include "values/FileName.h"

namespace bukorval::host {
namespace {

struct ExportOptions {
  std::string file, kind, measure, csv;
  bool tidy = false;
};

using Writer = std::function<void(std::ostream& out, const sheet::CsvStyle& style)>;

void writeCsv(const ExportOptions& options, const Writer& write) {
  const auto* style = sheet::kCsvStyles.data();
  for (const auto& known : sheet::kCsvStyles)
    if (known.name == options.csv) style = &known;
  if (options.file.empty()) return write(std::cout, *style);
  sheet::replaceFile(options.file, [&](const std::string& name) {
    std::ofstream out(values::pathOf(name), std::ios::binary);
    write(out, *style);
    out.close();
    if (!out) throw dati::Refused(tr("Cannot write {}", options.file));
  });
}

sheet::CardSelection selectedCards(Environment& environment) {
  requireBudget(environment);
  const auto& budget = environment.budget();
  return {budgetScelto(budget), budget.CodiceSede, budget.BdgTipoScheda};
}

void exportTidy(Environment& environment, const ExportOptions& options) {
  sheet::TidySelection selection{selectedCards(environment), {}, nullptr};
  if (!options.kind.empty()) selection.kind = parseDetailKind(options.kind).kind;
  if (!options.measure.empty()) selection.measure = &parseMeasure(options.measure);
  auto& budget = environment.budget();
  if (selection.kind) requireDetailKind(budget, *selection.kind);
  writeCsv(options, [&](std::ostream& out, const sheet::CsvStyle& style) {
    sheet::writeTidy(out, budget, *environment.connection(), selection, style);
  });
}

void exportWide(Environment& environment, const ExportOptions& options, bool spreadsheet) {
  const sheet::SheetSelection selection{selectedCards(environment),
                                        parseDetailKind(options.kind.empty() ? "budget" : options.kind).kind,
                                        &parseMeasure(options.measure.empty() ? "amount" : options.measure)};
  auto& budget = environment.budget();
  requireDetailKind(budget, selection.kind);
  auto cards = sheet::readBudgetSheet(budget, *environment.connection(), selection);
  if (cards.rows.empty()) throw dati::Refused(tr("The selection has no cards"));
  for (auto& key : cards.keys) {
    key.title = title(key.name);
    key.hidden = isTechnical(key.name);
  }
  if (spreadsheet)
    sheet::replaceFile(options.file, [&](const std::string& name) { sheet::writeXlsx(cards, name); });
  else
    writeCsv(options, [&](std::ostream& out, const sheet::CsvStyle& style) { sheet::writeWide(out, cards, style); });
}

void exportCards(Environment& environment, const ExportOptions& options) {
  const bool spreadsheet = options.file.ends_with(".xlsx");
  if (!spreadsheet && !options.file.empty() && !options.file.ends_with(".csv"))
    throw UsageError(tr("-o names a file that ends in .xlsx or .csv"));
  if (spreadsheet && (options.tidy || !options.csv.empty()))
    throw UsageError(tr("--tidy and --csv write CSV, not a spreadsheet: -o names a file that ends in .csv"));
  if (options.file.empty() && options.csv.empty() && !options.tidy)
    throw UsageError(tr("-o is needed; --csv and --tidy may write to standard output"));
  if (options.tidy) return exportTidy(environment, options);
  exportWide(environment, options, spreadsheet);
}

std::vector<Option> declareOptions(ExportOptions& options) {
  std::vector<std::string> styles;
  for (const auto& style : sheet::kCsvStyles) styles.emplace_back(style.name);
  return {
      {.flags = "-o,--output", .help = "file to write, .xlsx or .csv", .target = &options.file, .valueName = "FILE"},
      {.flags = "--kind",
       .help = "budget (default), actual, orders, forecastN or a number; --tidy: default all",
       .target = &options.kind},
      {.flags = "--measure", .help = "amount (default), qty1 or qty2; --tidy: default all", .target = &options.measure},
      {.flags = "--csv",
       .help = "CSV: plain (comma, decimal point) or it (semicolon, decimal comma, byte-order mark)",
       .target = &options.csv,
       .oneOf = styles},
      {.flags = "--tidy", .help = "CSV with a line a value and all keys, for other programs", .target = &options.tidy}};
}

}  // namespace

Command exportCommand() {
  const auto options = std::make_shared<ExportOptions>();
  return {"export", "Write the cards of a budget to a spreadsheet or CSV, to be edited and imported again",
          "  bukorval export -d demo.db -t 4 -s 01 -y 2025 -b 1 -k 0 -o budget.xlsx\n"
          "  bukorval export -d demo.db -t 4 -s 01 -y 2025 --kind forecast1 --csv it -o forecast.csv\n"
          "  bukorval export -d demo.db -t 4 -s 01 -y 2025 --tidy -o values.csv\n"
          "A row is a card, a column a period. `import --sheet` takes back what was changed.",
          declareOptions(*options), [options](Environment& environment) { exportCards(environment, *options); }};
}

}  // namespace bukorval::host
