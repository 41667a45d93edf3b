#include "host/server/Figures.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <nlohmann/json.hpp>
#include <optional>

#include "dati/LastChange.h"
#include "host/commands/Deltas.h"
#include "host/environment/Errors.h"
#include "host/environment/Selection.h"
#include "host/server/JsonText.h"
#include "language/Language.h"
#include "values/Conversion.h"
#include "values/NumberText.h"

namespace bukorval::host::server {
namespace {

using nlohmann::json;
using values::Variant;

constexpr std::size_t kMostRows = 200;
constexpr int kMostForecasts = 20;
constexpr std::string_view kMark = " ~";  ///< what the database said about commits stands behind it

/// The last forecast that the figures name.
int forecastsOf(const json& rows) {
  int last = 0;
  for (const auto& row : rows)
    for (const auto& [name, value] : row.items())
      if (const auto at = name.find("FORECAST"); at != std::string::npos) {
        int number = 0;
        std::from_chars(name.data() + at + 8, name.data() + name.size(), number);
        last = std::clamp(number, last, kMostForecasts);
      }
  return last;
}

/// Every figure and every delta that a grid with so many forecasts has.
Table emptyGrid(int forecasts) {
  constexpr std::array<std::string_view, 3> kMeasures{"IMP", "QTA1", "QTA2"};
  Table table;
  for (std::size_t i = 0; i < kMeasures.size(); ++i) {
    const std::string measure(kMeasures[i]);
    const int decimals = i == 0 ? 2 : 3;
    const auto add = [&](const std::string& name) { table.columns.push_back({name, name, true, decimals}); };
    add(measure + "_BUDGET");
    const auto compared = [&](const std::string& value, const std::string& suffix) {
      add(measure + "_" + value);
      add("DELTA" + measure + "_" + suffix);
      add("DELTAPERC" + measure + "_" + suffix);
    };
    compared("CONSUNTIVO", "CONS");
    for (int n = 1; n <= forecasts; ++n) compared("FORECAST" + std::to_string(n), "FORE" + std::to_string(n));
  }
  return table;
}

Variant figureOf(const json& value, const std::string& name) {
  if (value.is_null() || (value.is_string() && value.get_ref<const std::string&>().empty())) return Variant::Null();
  if (!value.is_string() && !value.is_number_integer())
    throw UsageError(tr("{} takes a text or a whole number; decimals are given as text", name));
  const auto text = value.is_string() ? value.get<std::string>() : value.dump();
  const auto number = values::Decimal::TryParse(text);
  if (!number) throw UsageError(tr("{}: {} is no number", name, text));
  return *number;
}

}  // namespace

std::string deltasOf(const json& body) {
  const auto rows = body.contains("rows") ? body["rows"] : json::array({body.value("cells", json())});
  const bool right = rows.is_array() && std::ranges::all_of(rows, [](const json& row) { return row.is_object(); });
  if (!right || rows.size() > kMostRows)
    throw UsageError(tr("The figures are up to {} objects of columns and values", kMostRows));
  auto table = emptyGrid(forecastsOf(rows));
  for (const auto& row : rows) {
    auto& cells = table.rows.emplace_back(table.columns.size(), Variant::Null());
    for (const auto& [name, value] : row.items())
      if (const auto column = table.position(name)) cells[*column] = figureOf(value, name);
  }
  CLSKORVAL object;
  fillDeltas(object, table);
  std::string out = R"({"rows":[)";
  for (std::size_t r = 0; r < table.rows.size(); ++r) {
    out += r == 0 ? "{" : ",{";
    bool first = true;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
      const auto& column = table.columns[i];
      if (!column.name.starts_with("DELTA")) continue;
      if (!first) out += ',';
      first = false;
      appendQuoted(out, column.name);
      out += ':';
      appendCell(out, table.rows[r][i], column);
    }
    out += '}';
  }
  return out + "]}";
}

std::string changesSince(Environment& environment, const std::string& since, const std::string& mark) {
  requireBudget(environment);
  std::optional<dati::Moment> seen;
  if (!since.empty()) {
    const auto sign = since.find(kMark);
    seen = dati::parseMoment(since.substr(0, sign));
    if (!seen) throw UsageError(tr("{} is no moment as `now` named it", since));
    if (sign != std::string::npos && since.substr(sign + kMark.size()) == mark)
      return R"({"now":)" + quotedText(since) + R"(,"cards":[]})";
  }
  const auto changes = dati::changedSince(*environment.connection(), budgetScelto(environment.budget()), seen);
  std::string out = R"({"now":)" + quotedText(dati::textOf(changes.now).append(kMark).append(mark)) + R"(,"cards":[)";
  bool first = true;
  for (const auto& [card, change] : changes.cards) {
    if (!first) out += ',';
    first = false;
    out += R"({"id":)" + std::to_string(card) + R"(,"lastChange":)" +
           (change ? quotedText(dati::textOf(*change)) : std::string("null")) + "}";
  }
  return out + "]}";
}

}  // namespace bukorval::host::server
