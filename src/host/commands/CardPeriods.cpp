#include "host/commands/CardPeriods.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "dati/CardDetails.h"
#include "dati/DetailNames.h"
#include "host/commands/Deltas.h"
#include "values/Arithmetic.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

/// Puts the name of each period after its number.
void addNames(CLSKORVAL& budget, Table& table) {
  const auto period = table.position("PERIODO");
  if (!period) return;
  const auto periodicity = budget.GetPeriodicitaBudget(budget.TipoBudget, budget.SottoTipoBudget);
  const auto yearKind = budget.GetAnnoBudgetFiscaleSolare(budget.TipoBudget, budget.SottoTipoBudget);
  const auto after = static_cast<std::ptrdiff_t>(*period) + 1;
  table.columns.insert(table.columns.begin() + after, {"DESCRIZIONE", "Description"});
  for (auto& row : table.rows) {
    row.insert(row.begin() + after,
               budget.GetDescrizionePeriodo(budget.CodiceDitta, periodicity, yearKind, values::toInt16(row[*period]),
                                            budget.AnnoEsercizio, budget.ProgressivoEsercizio));
  }
  if (!table.totals.empty()) table.totals.insert(table.totals.begin() + after, values::Variant::Null());
}

/// The columns of one kind of detail: its identifiers and its values.
struct KindColumns {
  std::size_t id;
  std::vector<std::size_t> values;
};

std::vector<KindColumns> columnsByKind(const Table& table) {
  std::vector<KindColumns> found;
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    const auto& name = table.columns[i].name;
    if (!name.starts_with("ID_")) continue;
    auto& kind = found.emplace_back(KindColumns{i, {}});
    for (const auto measure : kMeasurePrefixes)
      if (const auto value = table.position(std::string(measure) + name.substr(3))) kind.values.push_back(*value);
  }
  return found;
}

/// A period with several details of one kind comes in several rows, each with the same details of the other kinds.
/// They are shown once, so that they count once.
void removeRepeated(Table& table) {
  for (const auto& kind : columnsByKind(table)) {
    std::set<std::int64_t> seen;
    for (auto& row : table.rows) {
      if (row[kind.id].isNothing() || seen.insert(values::toInt64(row[kind.id])).second) continue;
      row[kind.id] = values::Variant::Null();
      for (const auto value : kind.values) row[value] = values::Variant::Null();
    }
  }
}

/// The totals of the forecasts, by column: as in the grid, a period counts with its actual value where it has one. The
/// rows are those of the object, which show each pair of a forecast and an actual of its period.
std::map<std::size_t, values::Variant> forecastTotals(const Table& table) {
  std::map<std::size_t, values::Variant> totals;
  const auto actualId = table.position("ID_CONSUNTIVO");
  for (std::size_t id = 0; id < table.columns.size(); ++id) {
    const auto& name = table.columns[id].name;
    if (!actualId || !name.starts_with("ID_FORECAST")) continue;
    std::set<std::pair<std::int64_t, std::int64_t>> seen;
    for (const auto& row : table.rows) {
      if (row[id].isNothing()) continue;
      const auto pairedWith = row[*actualId].isNothing() ? 0 : values::toInt64(row[*actualId]);
      if (!seen.emplace(values::toInt64(row[id]), pairedWith).second) continue;
      for (const auto measure : kMeasurePrefixes) {
        const auto own = table.position(std::string(measure) + name.substr(3));
        const auto actual = table.position(std::string(measure) + "CONSUNTIVO");
        const auto& counted = row[row[*actual].isNothing() ? *own : *actual];
        auto& total = totals.try_emplace(*own, values::Variant::Null()).first->second;
        if (!counted.isNothing()) total = total.isNull() ? counted : values::add(total, counted);
      }
    }
  }
  return totals;
}

/// Orders are not summed: as in the grid, the latest one stands for the card.
void totalLatestOrder(Table& table) {
  const auto id = table.position("ID_ORDINI");
  for (const auto measure : kMeasurePrefixes) {
    const auto value = table.position(std::string(measure) + "ORDINI");
    if (!id || !value) continue;
    std::int64_t latest = 0;
    for (const auto& row : table.rows) {
      if (row[*id].isNothing() || row[*value].isNothing() || values::toInt64(row[*id]) < latest) continue;
      latest = values::toInt64(row[*id]);
      table.totals[*value] = row[*value];
    }
  }
}

/// With totals, without names.
Table valuesByPeriod(Environment& environment, const values::Variant& card) {
  const auto periods = environment.budget().RecSetPeriodiBudget(card);
  environment.requireSuccess();
  auto table = tableOf(*periods);
  for (auto& column : table.columns) column.secondary = column.name.starts_with("ID_");
  const auto forecasts = forecastTotals(table);
  removeRepeated(table);
  markTotals(table);
  table.addTotals();
  totalLatestOrder(table);
  for (const auto& [column, total] : forecasts) table.totals[column] = total;
  fillDeltas(environment.budget(), table);
  return table;
}

/// Of a column of figures: its measure, and the number of its forecast, by which the budget's grid orders them.
std::optional<std::pair<std::size_t, int>> placeInGrid(const std::string& name) {
  for (std::size_t i = 0; i < dati::kMeasures.size(); ++i) {
    if (name.find(dati::kMeasures[i].gridColumn) == std::string::npos) continue;
    int forecast = 0;
    if (name.find("FORE") != std::string::npos) {
      const auto digits = name.find_last_not_of("0123456789") + 1;
      std::from_chars(name.data() + digits, name.data() + name.size(), forecast);
    }
    return std::pair(i, forecast);
  }
  return std::nullopt;
}

/// The figures of the grid among the columns by period, in its order.
std::vector<std::size_t> figuresOf(const Table& periods) {
  std::vector<std::size_t> figures;
  const auto place = [&](std::size_t i) { return placeInGrid(periods.columns[i].name); };
  for (std::size_t i = 0; i < periods.columns.size(); ++i)
    if (place(i)) figures.push_back(i);
  std::ranges::stable_sort(figures, {}, place);
  return figures;
}

/// A description stands behind its code.
std::vector<std::size_t> codesInOrder(const Table& codes) {
  std::vector<std::size_t> order;
  for (std::size_t i = 0; i < codes.columns.size(); ++i) {
    if (codes.columns[i].name.ends_with("_DESCR")) continue;
    order.push_back(i);
    if (const auto description = codes.position(codes.columns[i].name + "_DESCR")) order.push_back(*description);
  }
  return order;
}

/// Orders have the decimals of their measure there, which the grid by period cuts.
void takeOrders(Environment& environment, const values::Variant& card, Table& periods) {
  for (const auto& measure : dati::kMeasures) {
    const auto order = periods.position(std::string(measure.gridColumn) + "ORDINI");
    if (!order) continue;
    periods.columns[*order].decimals = measure.decimals;
    if (!periods.totals[*order].isNothing())
      periods.totals[*order] = dati::latestOrderOf(*environment.connection(), card, measure);
  }
}

}  // namespace

Table periodsTable(Environment& environment, const values::Variant& card) {
  auto table = valuesByPeriod(environment, card);
  addNames(environment.budget(), table);
  return table;
}

Table cardRows(Environment& environment, ado::Recordset& found) {
  const auto codes = tableOf(found);
  const auto order = codesInOrder(codes);
  Table table;
  for (const auto i : order) table.columns.push_back(codes.columns[i]);
  for (const auto& code : codes.rows) {
    auto& row = table.rows.emplace_back();
    for (const auto i : order) row.push_back(code[i]);
    auto periods = valuesByPeriod(environment, code[*codes.position("BU65_ID")]);
    takeOrders(environment, row[*table.position("BU65_ID")], periods);
    const auto figures = figuresOf(periods);
    if (table.columns.size() == order.size())
      for (const auto i : figures) table.columns.push_back(periods.columns[i]);
    for (const auto i : figures) row.push_back(periods.totals[i]);
  }
  return table;
}

}  // namespace bukorval::host
