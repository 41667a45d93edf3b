#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "host/commands/Command.h"
#include "host/commands/Deltas.h"
#include "host/commands/Explain.h"
#include "host/environment/Arguments.h"
#include "host/environment/Selection.h"
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

void showPeriods(Environment& environment, const std::string& cardText, bool explain) {
  const auto card = parseArgument(cardText);
  selectCard(environment, card);
  auto& budget = environment.budget();
  const auto periods = budget.RecSetPeriodiBudget(card);
  environment.requireSuccess();
  auto table = tableOf(*periods);
  addNames(budget, table);
  for (auto& column : table.columns) column.secondary = column.name.starts_with("ID_");
  const auto forecasts = forecastTotals(table);
  removeRepeated(table);
  markTotals(table);
  table.addTotals();
  totalLatestOrder(table);
  for (const auto& [column, total] : forecasts) table.totals[column] = total;
  fillDeltas(budget, table);
  if (explain) explainPeriods(environment, table, card);
  environment.show(table);
}

}  // namespace

Command periodsCommand() {
  const auto card = std::make_shared<std::string>();
  const auto explain = std::make_shared<bool>(false);
  return {
      "periods",
      "Show one card period by period",
      "  bukorval periods 12 -d demo.db\n"
      "CARD is the identifier that `bukorval grid` shows in its first column (BU65_ID).",
      {{"CARD", "identifier of the card", card.get(), true},
       {"--explain", "show what each forecast is made of: actuals, forecast, and from which period", explain.get()}},
      [card, explain](Environment& environment) { showPeriods(environment, *card, *explain); }};
}

}  // namespace bukorval::host
