#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "dati/CardDetails.h"
#include "dati/LastChange.h"
#include "host/commands/CardPeriods.h"
#include "host/commands/Command.h"
#include "host/commands/Deltas.h"
#include "host/commands/Explain.h"
#include "host/environment/Selection.h"
#include "host/output/Titles.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

/// What the selection fixes is the same on every line.
void hideSelection(const SharedOptions& options, Table& table) {
  if (options.properties.contains("CodiceSede")) table.hide({"BU65_CODICE_CG31", "BU65_CODICE_CG31_DESCR"});
  if (options.properties.contains("BdgTipoScheda")) table.hide({"BU65_INDCOSRIC_BU07"});
}

struct GridOptions {
  bool explain = false, stamps = false;
  int first = 0;  ///< 0 for all cards
};

/// When each card was changed last, for `set --seen`.
void addStamps(Environment& environment, Table& table) {
  const auto id = table.position("BU65_ID");
  if (!id) return;
  std::vector<std::int64_t> cards;
  for (const auto& row : table.rows) cards.push_back(values::toInt64(row[*id]));
  auto changes = dati::lastChanges(*environment.connection(), environment.budget().CodiceDitta, cards);
  table.columns.push_back({"ULTIMAMODIFICA", "Last change"});
  for (std::size_t i = 0; i < cards.size(); ++i) table.rows[i].push_back(dati::textOf(changes[cards[i]]));
  if (!table.totals.empty()) table.totals.push_back(values::Variant::Null());
}

Table gridTable(Environment& environment) {
  const auto grid = environment.budget().RecordSetBudget();
  environment.requireSuccess();
  return tableOf(*grid);
}

void showGrid(Environment& environment, const GridOptions& options) {
  requireGrid(environment);
  auto& budget = environment.budget();
  auto table = options.first > 0
                   ? cardRows(environment, *dati::firstCodes(budget, *environment.connection(), options.first))
                   : gridTable(environment);
  for (auto& column : table.columns) column.secondary = column.secondary || isTechnical(column.name);
  hideSelection(environment.options, table);
  if (environment.format().forPeople) mergeDescriptions(table);
  // A total is one of all cards.
  if (options.first == 0) {
    markTotals(table);
    table.addTotals();
    fillDeltas(budget, table);
  }
  if (options.explain) explainGrid(environment, table);
  if (options.stamps) addStamps(environment, table);
  environment.show(table);
}

}  // namespace

Command gridCommand() {
  const auto options = std::make_shared<GridOptions>();
  return {
      "grid",
      "Show the cards of a budget with their totals and deltas",
      "  bukorval grid -d demo.db -t 4 -s 01 -y 2025 --BdgTipoScheda 0 --CodiceSede 1\n"
      "Budget type 4 is kept by card kind (0 cost, 1 revenue), some budgets by site: then both are needed.",
      {{"--explain", "show what each forecast is made of: actuals, forecast, and from which period", &options->explain},
       {"--stamps", "when each card was changed last, for `set --seen`", &options->stamps},
       {.flags = "--first",
        .help = "so many cards, without waiting for the others and without totals",
        .target = &options->first,
        .excludes = "--explain",
        .range = {{1, 500}}}},
      [options](Environment& environment) { showGrid(environment, *options); }};
}

}  // namespace bukorval::host
