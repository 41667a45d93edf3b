#include "host/commands/Explain.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "host/output/Titles.h"
#include "report/Report.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

using values::Variant;

/// Of each forecast, in this order.
constexpr std::size_t kParts = 3, kOwn = 1, kFrom = 2;

/// The parts of every forecast, for each measure.
std::vector<report::Result> partsOf(Environment& environment, report::Query query) {
  auto& budget = environment.budget();
  const int forecasts = budget.GetNumeroForecast(budget.TipoBudget, budget.SottoTipoBudget);
  environment.requireSuccess();
  if (forecasts == 0) return {};
  query.values.clear();
  for (int n = 1; n <= forecasts; ++n)
    for (const auto* part : {".actual", ".forecast", ".from"})
      query.values.push_back("forecast" + std::to_string(n) + part);
  std::vector<report::Result> results;
  for (const auto* measure : {"amount", "qty1", "qty2"}) {
    query.measure = measure;
    results.push_back(report::run(budget, *environment.connection(), query));
  }
  return results;
}

/// "IMP_FORECAST1", which "IMP_CONS_FORE1" is a part of.
std::string forecastField(const std::string& part) {
  constexpr std::string_view kPart = "_CONS_FORE";
  const auto at = part.find(kPart);
  return part.substr(0, at) + "_FORECAST" + part.substr(at + kPart.size());
}

/// The value of a part in a row of the table, or in its totals.
using PartValue = std::function<Variant(const std::vector<Variant>* row, std::size_t value)>;

void insertParts(Table& table, const report::Result& result, const PartValue& valueOf) {
  for (std::size_t first = 0; first < result.values.size(); first += kParts) {
    const auto forecast = table.position(forecastField(result.values[first].field));
    if (!forecast) continue;
    const auto after = static_cast<std::ptrdiff_t>(*forecast) + 1;
    std::vector<Column> columns;
    for (std::size_t i = first; i < first + kParts; ++i) {
      const auto& value = result.values[i];
      columns.push_back({value.field, title(value.field), value.decimals > 0, value.decimals});
    }
    table.columns.insert(table.columns.begin() + after, columns.begin(), columns.end());
    const auto insert = [&](std::vector<Variant>& into, const std::vector<Variant>* row) {
      std::vector<Variant> cells;
      for (std::size_t i = first; i < first + kParts; ++i) cells.push_back(valueOf(row, i));
      into.insert(into.begin() + after, cells.begin(), cells.end());
    };
    for (auto& row : table.rows) insert(row, &row);
    if (!table.totals.empty()) insert(table.totals, nullptr);
  }
}

}  // namespace

void explainGrid(Environment& environment, Table& table) {
  report::Query query;
  query.rows = {"id"};
  const auto& budget = environment.budget();
  for (const auto& [axis, code] : {std::pair("site", budget.CodiceSede), std::pair("kind", budget.BdgTipoScheda)})
    if (!values::isBlank(code)) query.where.push_back({axis, {values::toPlainText(code)}});
  const auto id = table.position("BU65_ID");
  if (!id) return;
  for (const auto& result : partsOf(environment, query)) {
    std::map<std::int64_t, const report::Row*> cards;
    for (const auto& row : result.rows)
      if (row.level() == 1) cards.emplace(values::toInt64(row.keys.front().code), &row);
    insertParts(table, result, [&](const std::vector<Variant>* row, std::size_t value) {
      if (row == nullptr) return result.cell(result.rows.front(), 0, value).value;
      const auto card = cards.find(values::toInt64((*row)[*id]));
      return card == cards.end() ? Variant::Null() : result.cell(*card->second, 0, value).value;
    });
  }
}

void explainPeriods(Environment& environment, Table& table, const values::Variant& card) {
  report::Query query;
  query.columns = "period";
  query.where = {{"id", {values::toPlainText(card)}}};
  const auto period = table.position("PERIODO");
  if (!period) return;
  // A period with several details of one kind has several rows.
  std::map<std::int64_t, const std::vector<Variant>*> firstRows;
  for (const auto& row : table.rows) firstRows.try_emplace(values::toInt64(row[*period]), &row);
  for (const auto& result : partsOf(environment, query)) {
    const auto& total = result.rows.front();
    const auto last = result.columns.size() - 1;
    std::map<std::size_t, std::size_t> begins;  // by the position of a part that is a period
    for (std::size_t value = kFrom; value < result.values.size(); value += kParts)
      for (std::size_t column = result.columns.size(); column-- > 0;)
        if (column != last || last == 0)
          if (!result.cell(total, column, value - kFrom + kOwn).value.isNothing()) begins[value] = column;
    insertParts(table, result, [&](const std::vector<Variant>* row, std::size_t value) -> Variant {
      if (row == nullptr) return result.cell(total, last, value).value;
      const auto number = values::toInt64((*row)[*period]);
      const auto column = static_cast<std::size_t>(number - 1);
      if (firstRows.at(number) != row || column > last) return Variant::Null();
      if (value % kParts != kFrom) return result.cell(total, column, value).value;
      const auto begin = begins.find(value);
      return begin != begins.end() && begin->second == column ? result.cell(total, last, value).value : Variant::Null();
    });
  }
}

}  // namespace bukorval::host
