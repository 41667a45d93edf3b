#include "report/Details.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <string>
#include <utility>

#include "language/Language.h"
#include "values/Conversion.h"

namespace bukorval::report {
namespace {

using values::Variant;

constexpr int kCost = 0, kRevenue = 1, kNoKind = -1;

/// The kind of cards that do not tell theirs, by the type of their budget; none for budgets that have both.
int kindOfType(BdgTipo type) {
  constexpr int kKinds[] = {kRevenue, kCost, kCost, kCost, kNoKind, kNoKind, kRevenue, kCost, kNoKind, kCost};
  const auto position = static_cast<std::size_t>(type);
  return position < std::size(kKinds) ? kKinds[position] : kNoKind;
}

template <class Visit>
void forEachRow(ado::Recordset& rows, const Visit& visit) {
  if (rows.RecordCount() == 0) return;
  for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) visit();
}

Sum sumOf(const Variant& value, int kind) {
  if (value.isNothing()) return {};
  const auto number = values::toDecimal(value);
  return {number, kind == kRevenue ? number : kind == kCost ? -number : values::Decimal(), true};
}

/// Where details go.
struct Place {
  Node& node;
  std::size_t column;
  int period;
};

/// @param taken  what a forecast takes from actuals.
void add(Cube& cube, const Place& place, int kind, const Sum& own, const Sum& taken) {
  if (kind <= bdgDettaglioOrdini) {
    cube.add(place.node, place.column, static_cast<std::size_t>(kind), own);
    return;
  }
  const int forecast = kind - bdgDettaglioOrdini;
  cube.add(place.node, place.column, ownOf(forecast), own);
  cube.add(place.node, place.column, actualOf(forecast), taken);
  place.node.turns[static_cast<std::size_t>(forecast - 1)] +=
      {taken.any ? place.period : 0, own.any ? place.period : 0};
}

}  // namespace

Details::Details(const Plan& plan, BdgTipo type, ado::RecordsetPtr rows)
    : plan_(plan), type_(type), rows_(std::move(rows)) {
  if (!plan.columns) return;
  const auto &voice = (*rows_)["VOCE"], &code = axis(plan.rows.size());
  forEachRow(*rows_, [&] {
    if (voice.Value().isNothing()) columnOfCode_.emplace(code.Value(), 0);
  });
  std::size_t next = 0;
  for (auto& [of, column] : columnOfCode_) column = next++;
}

const ado::Field& Details::axis(std::size_t position) const { return (*rows_)["ASSE" + std::to_string(position + 1)]; }

std::vector<Column> Details::columns(const Descriptions& descriptions) const {
  std::vector<Column> columns;
  if (!plan_.columns && plan_.periods.columns.size() > 1) columns = plan_.periods.columns;
  for (const auto& [code, position] : columnOfCode_) {
    const auto text = values::toPlainText(code);
    const auto found = descriptions.find(code);
    const bool described = found != descriptions.end() && !found->second.empty();
    columns.push_back({(plan_.columns->name == "site" ? "SITE" : "KIND") + text, described ? found->second : text});
  }
  columns.push_back({"", tr("Total")});
  return columns;
}

Details::Groups Details::groups(Cube& cube) const {
  std::vector<const ado::Field*> codes;
  for (std::size_t i = 0; i < plan_.rows.size(); ++i) codes.push_back(&axis(i));
  const auto* column = plan_.columns ? &axis(plan_.rows.size()) : nullptr;
  const auto &group = (*rows_)["GRUPPO"], &voice = (*rows_)["VOCE"], &kind = (*rows_)["GENERE"];
  Groups groups;
  std::vector<Variant> keys(codes.size());
  forEachRow(*rows_, [&] {
    if (!voice.Value().isNothing()) return;
    for (std::size_t i = 0; i < keys.size(); ++i) keys[i] = codes[i]->Value();
    const int cards = kind.Value().isNothing() ? kindOfType(type_) : values::toInt32(kind.Value());
    groups[values::toInt64(group.Value())] = {&cube.node(keys), cards, column ? columnOfCode_.at(column->Value()) : 0};
  });
  return groups;
}

void Details::fill(Cube& cube) const {
  const auto groups = this->groups(cube);
  const auto &group = (*rows_)["GRUPPO"], &voice = (*rows_)["VOCE"], &period = (*rows_)["PERIODO"],
             &value = (*rows_)["VALORE"], &actual = (*rows_)["CONSUNTIVO"];
  forEachRow(*rows_, [&] {
    if (voice.Value().isNothing() || (value.Value().isNothing() && actual.Value().isNothing())) return;
    const auto& [node, cards, column] = groups.at(values::toInt64(group.Value()));
    const int number = values::toInt32(period.Value());
    const Place place{*node, plan_.columns ? column : columnOf(number), number};
    add(cube, place, values::toInt32(voice.Value()), sumOf(value.Value(), cards), sumOf(actual.Value(), cards));
  });
}

/// A detail of a period that the budget does not have is in no column but the total's.
std::size_t Details::columnOf(int period) const {
  const auto& known = plan_.periods.ofPeriods;
  const auto position = static_cast<std::size_t>(std::max(period, 0));
  return position < known.size() ? known[position] : std::numeric_limits<std::size_t>::max();
}

}  // namespace bukorval::report
