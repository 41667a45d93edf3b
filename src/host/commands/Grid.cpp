#include <cstddef>

#include "host/commands/Command.h"
#include "host/commands/Deltas.h"
#include "host/environment/Selection.h"
#include "host/output/Titles.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

/// A description begins with its code, so the aligned table needs only one of the two columns; a code that
/// nothing describes stands in for its description.
void mergeDescriptions(Table& table) {
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    const auto description = table.position(table.columns[i].name + "_DESCR");
    if (!description) continue;
    table.columns[i].secondary = true;
    table.columns[*description].title = table.columns[i].title;
    for (auto& row : table.rows) {
      if (values::isBlank(row[*description])) row[*description] = row[i];
    }
  }
}

/// What the selection fixes is the same on every line.
void hideSelection(const SharedOptions& options, Table& table) {
  if (options.properties.contains("CodiceSede")) table.hide({"BU65_CODICE_CG31", "BU65_CODICE_CG31_DESCR"});
  if (options.properties.contains("BdgTipoScheda")) table.hide({"BU65_INDCOSRIC_BU07"});
}

void showGrid(Environment& environment) {
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
  environment.show(table);
}

}  // namespace

Command gridCommand() {
  return {"grid",
          "Show the cards of a budget with their totals and deltas",
          "  bukorval grid -d demo.db -t 4 -s 01 -y 2025 --BdgTipoScheda 0 --CodiceSede 1\n"
          "Budget type 4 is kept by card kind (0 cost, 1 revenue), some budgets by site: then both are needed.",
          {},
          showGrid};
}

}  // namespace bukorval::host
