#include "report/Evaluation.h"

#include <algorithm>

#include "dati/Failure.h"
#include "report/Columns.h"

namespace bukorval::report {
namespace {

using values::Variant;

Variant valueOf(const Sum& sum) { return sum.any ? Variant(sum.value) : Variant::Null(); }

/// @param effect  how much better the company is off.
Judgement judge(const values::Decimal& effect) {
  if (effect.isZero()) return Judgement::None;
  return effect.isNegative() ? Judgement::Unfavourable : Judgement::Favourable;
}

}  // namespace

Evaluation::Evaluation(CLSKORVAL& budget, const Cube& cube, const std::vector<Figure>& figures, std::size_t columns)
    : budget_(budget), cube_(cube), figures_(figures), columns_(columns) {
  if (std::ranges::find(figures, Formula::Turn, &Figure::formula) == figures.end()) return;
  const auto periods = periodColumns(budget, "period").columns;
  for (const auto& period : periods) periodNames_.push_back(period.title);
}

std::vector<Cell> Evaluation::cells(const Node& node) const {
  std::vector<Cell> cells;
  cells.reserve(columns_ * figures_.size());
  for (std::size_t column = 0; column < columns_; ++column)
    for (const auto& figure : figures_) cells.push_back(cell(node, column, figure));
  return cells;
}

Cell Evaluation::cell(const Node& node, std::size_t column, const Figure& figure) const {
  // Where a forecast turns is a matter of the whole row.
  if (figure.formula == Formula::Turn)
    return {column + 1 == columns_ ? turn(node.turns[static_cast<std::size_t>(figure.forecast - 1)]) : Variant::Null()};
  if (figure.formula == Formula::Available) return available(node, column);
  Sum sum;
  for (const auto fact : figure.facts) sum += cube_.sum(node, column, fact);
  if (figure.formula == Formula::Sum) return {valueOf(sum)};
  return delta(sum, cube_.sum(node, column, kBudget), figure.formula);
}

Cell Evaluation::delta(const Sum& sum, const Sum& budget, Formula formula) const {
  if (!sum.any || !budget.any) return {Variant::Null()};
  const auto value = formula == Formula::Delta ? budget_.CalcolaDelta(sum.value, budget.value)
                                               : budget_.CalcolaDeltaPercentuale(sum.value, budget.value);
  dati::requireSuccess(budget_);
  return {value, value.isNothing() ? Judgement::None : judge(sum.effect - budget.effect)};
}

/// What is left of the budget; what is missing counts as nothing. Below zero it is judged.
Cell Evaluation::available(const Node& node, std::size_t column) const {
  const auto &budget = cube_.sum(node, column, kBudget), &actual = cube_.sum(node, column, kActual),
             &orders = cube_.sum(node, column, kOrders);
  if (!budget.any && !actual.any && !orders.any) return {Variant::Null()};
  const auto value = budget.value - actual.value - orders.value;
  const auto effect = actual.effect + orders.effect - budget.effect;
  return {value, value.isNegative() ? judge(effect) : Judgement::None};
}

/// "Ottobre", or "Agosto - Ottobre" where some cards of the row turn earlier than others.
Variant Evaluation::turn(const Turn& turn) const {
  const auto name = [&](int period) {
    const auto position = static_cast<std::size_t>(period - 1);
    return position < periodNames_.size() ? periodNames_[position] : std::to_string(period);
  };
  if (turn.firstOwn == 0) return Variant::Null();
  if (turn.lastActual < turn.firstOwn) return name(turn.firstOwn);
  return name(turn.firstOwn) + " - " + name(turn.lastActual + 1);
}

}  // namespace bukorval::report
