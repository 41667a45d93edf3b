#include <memory>

#include "host/commands/Command.h"
#include "host/commands/Deltas.h"
#include "host/commands/Explain.h"
#include "host/environment/Selection.h"
#include "host/output/Titles.h"

namespace bukorval::host {
namespace {

/// What the selection fixes is the same on every line.
void hideSelection(const SharedOptions& options, Table& table) {
  if (options.properties.contains("CodiceSede")) table.hide({"BU65_CODICE_CG31", "BU65_CODICE_CG31_DESCR"});
  if (options.properties.contains("BdgTipoScheda")) table.hide({"BU65_INDCOSRIC_BU07"});
}

void showGrid(Environment& environment, bool explain) {
  requireGrid(environment);
  auto& budget = environment.budget();
  const auto grid = budget.RecordSetBudget();
  environment.requireSuccess();
  auto table = tableOf(*grid);
  for (auto& column : table.columns) column.secondary = column.secondary || isTechnical(column.name);
  hideSelection(environment.options, table);
  if (environment.format().forPeople) mergeDescriptions(table);
  markTotals(table);
  table.addTotals();
  fillDeltas(budget, table);
  if (explain) explainGrid(environment, table);
  environment.show(table);
}

}  // namespace

Command gridCommand() {
  const auto explain = std::make_shared<bool>(false);
  return {
      "grid",
      "Show the cards of a budget with their totals and deltas",
      "  bukorval grid -d demo.db -t 4 -s 01 -y 2025 --BdgTipoScheda 0 --CodiceSede 1\n"
      "Budget type 4 is kept by card kind (0 cost, 1 revenue), some budgets by site: then both are needed.",
      {{"--explain", "show what each forecast is made of: actuals, forecast, and from which period", explain.get()}},
      [explain](Environment& environment) { showGrid(environment, *explain); }};
}

}  // namespace bukorval::host
