#include "report/Plan.h"

#include <algorithm>
#include <set>
#include <string>

#include "dati/Failure.h"
#include "frame/BudgetAnno.h"
#include "language/Language.h"

namespace bukorval::report {
namespace {

void requireOnce(const std::vector<std::string>& names) {
  for (const auto& name : names)
    if (std::ranges::count(names, name) > 1) throw dati::Refused(tr("'{}' stands twice", name));
}

bool uses(const Figure& figure, std::size_t fact) {
  return std::ranges::find(figure.facts, fact) != figure.facts.end();
}

bool usesOrders(const Figure& figure) { return figure.formula == Formula::Available || uses(figure, kOrders); }

bool usesBudgetOrActual(const Figure& figure) {
  if (figure.formula == Formula::Turn) return false;
  return figure.formula != Formula::Sum || uses(figure, kBudget) || uses(figure, kActual);
}

}  // namespace

Plan::Plan(CLSKORVAL& budget, const Query& query) : axes(budget) {
  askAxes(budget, query);
  const auto& measure = findMeasure(query.measure);
  forecasts = budget.GetNumeroForecast(budget.TipoBudget, budget.SottoTipoBudget);
  dati::requireSuccess(budget);
  for (const auto& name : query.values) figures.push_back(findFigure(name, measure, forecasts));
  askFigures(query);
  askOrder(query);
  reading.measure = measure.column;
  reading.conditions = condizioniSchede(budgetScelto(budget));
  for (const auto& filter : query.where) reading.conditions += axes.condition(filter);
  if (query.to) reading.periods = periodsUpTo(budget, *query.to);
}

void Plan::askAxes(CLSKORVAL& budget, const Query& query) {
  requireOnce(query.rows);
  for (const auto& name : query.rows) rows.push_back(axes.find(name));
  reading.axes = rows;
  if (isPeriods(query.columns)) {
    periods = periodColumns(budget, query.columns);
    return;
  }
  if (query.columns != "site" && query.columns != "kind")
    throw dati::Refused(
        tr("There are no columns '{}'; there are month, quarter, half, year, period, site, kind", query.columns));
  columns = axes.find(query.columns);
  reading.axes.push_back(*columns);
}

void Plan::askFigures(const Query& query) {
  if (figures.empty()) throw dati::Refused(tr("A report shows at least one value"));
  requireOnce(query.values);
  std::set<int> those;
  for (const auto& figure : figures)
    if (figure.forecast > 0) those.insert(figure.forecast);
  reading.forecasts.assign(those.begin(), those.end());
  reading.orders = std::ranges::any_of(figures, usesOrders);
  reading.budgetOrActual = std::ranges::any_of(figures, usesBudgetOrActual);
  reading.byPeriod =
      periods.columns.size() > 1 || std::ranges::find(figures, Formula::Turn, &Figure::formula) != figures.end();
}

/// The first rows are those of the first value, unless another one is named.
void Plan::askOrder(const Query& query) {
  sortBy = query.top > 0 ? 0 : figures.size();
  if (query.sort.empty()) return;
  const auto found = std::ranges::find(query.values, query.sort);
  if (found == query.values.end()) throw dati::Refused(tr("Only a value that is shown sorts, not '{}'", query.sort));
  sortBy = static_cast<std::size_t>(found - query.values.begin());
}

}  // namespace bukorval::report
