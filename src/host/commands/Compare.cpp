#include <memory>
#include <string>
#include <utility>

#include "dati/Cards.h"
#include "dati/Comparison.h"
#include "host/commands/Command.h"
#include "host/commands/DetailKind.h"
#include "host/environment/BudgetName.h"
#include "host/output/Titles.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

using values::Variant;

struct CompareOptions {
  std::string left, right, by;
  bool onlyChanged = false;
};

/// "4/01@2025:actual"; the budget where no kind is named.
dati::ComparedSide parseSide(Environment& environment, const std::string& text) {
  const auto colon = text.find(':');
  const auto named = parseBudgetName(environment, text.substr(0, colon));
  dati::selectBudget(environment.budget(), named);
  return {named, parsePeriodKind(environment.budget(), colon == std::string::npos ? "budget" : text.substr(colon + 1))};
}

/// A side without a value counts nothing.
Variant counted(const Variant& amount) { return amount.isNothing() ? Variant(values::Decimal()) : amount; }

bool isChanged(const dati::ComparedRow& row) {
  return row.onLeft != row.onRight || values::toDecimal(counted(row.left)) != values::toDecimal(counted(row.right));
}

Table tableOf(CLSKORVAL& budget, const dati::Comparison& comparison, const CompareOptions& options) {
  Table table;
  for (const auto& column : comparison.columns) {
    table.columns.push_back({column, title(column)});
    table.columns.back().secondary = isTechnical(column);
  }
  if (!comparison.periods.empty()) {
    table.columns.push_back({"PERIODO", "Period", true});
    table.columns.push_back({"DESCRIZIONE", "Description"});
  }
  const auto first = table.columns.size();
  table.columns.push_back({"SINISTRA", options.left, true, 2, false, true});
  table.columns.push_back({"DESTRA", options.right, true, 2, false, true});
  table.columns.push_back({"DELTA", "Delta", true, 2, false, true});
  table.columns.push_back({"DELTAPERC", "Delta %", true, 4, true});
  const auto percentage = [&](const Variant& left, const Variant& right) {
    return budget.CalcolaDeltaPercentuale(counted(right), counted(left));
  };
  for (const auto& row : comparison.rows) {
    if (options.onlyChanged && !isChanged(row)) continue;
    auto& cells = table.rows.emplace_back(row.key);
    if (!comparison.periods.empty()) {
      const auto known = static_cast<std::size_t>(row.period) <= comparison.periods.size();
      cells.emplace_back(row.period);
      cells.emplace_back(known ? comparison.periods[static_cast<std::size_t>(row.period) - 1] : std::string());
    }
    cells.insert(cells.end(), {row.left, row.right, budget.CalcolaDelta(counted(row.right), counted(row.left)),
                               percentage(row.left, row.right)});
  }
  if (table.rows.empty()) return table;
  table.addTotals();
  table.totals[first + 3] = percentage(table.totals[first], table.totals[first + 1]);
  return table;
}

void compare(Environment& environment, const CompareOptions& options) {
  const auto left = parseSide(environment, options.left), right = parseSide(environment, options.right);
  auto& budget = environment.budget();
  const auto comparison = dati::compare(budget, *environment.connection(), left, right, !options.by.empty());
  environment.show(tableOf(budget, comparison, options));
}

}  // namespace

Command compareCommand() {
  const auto options = std::make_shared<CompareOptions>();
  return {"compare",
          "Show two budgets, years, versions or kinds of detail side by side",
          "  bukorval compare 4/01@2025 4/02@2025 --only-changed -d demo.db\n"
          "  bukorval compare 4/01@2024:actual 4/01@2025 --by month -d demo.db\n"
          "A budget is TYPE/SUBTYPE@YEAR with the kind of its values behind a colon: budget, actual, forecastN. Cards\n"
          "match by the columns that tell them apart; one that only one side has is shown with a blank.",
          {{"LEFT", "what the other is compared with: 4/01@2025 or 4/01@2025:actual", &options->left, true},
           {"RIGHT", "the other", &options->right, true},
           {.flags = "--by",
            .help = "month: a line for each period, where both have the same ones",
            .target = &options->by,
            .oneOf = {"month"}},
           {"--only-changed", "leave out what is the same on both sides", &options->onlyChanged}},
          [options](Environment& environment) { compare(environment, *options); }};
}

}  // namespace bukorval::host
