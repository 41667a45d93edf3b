#include <algorithm>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>

#include "host/output/CellText.h"
#include "host/output/Formats.h"

namespace bukorval::host {
namespace {

using Json = nlohmann::ordered_json;

/// A double carries every number of up to 15 digits unchanged; a longer one goes as text rather than lose a
/// digit.
Json numberToJson(const std::string& text) {
  constexpr std::size_t kSafeDigits = 15;
  const auto digits =
      static_cast<std::size_t>(std::ranges::count_if(text, [](char c) { return c >= '0' && c <= '9'; }));
  if (digits > kSafeDigits) return text;
  if (text.find('.') == std::string::npos) return std::stoll(text);
  return std::stod(text);
}

/// Null, true or false, a number or text; dates as ISO text.
Json toJson(const values::Variant& value, const Column& column) {
  if (value.isNothing()) return nullptr;
  if (const auto* boolean = value.get_if<bool>()) return *boolean;
  const std::string text = plainText(value, column);
  return value.isNumber() ? numberToJson(text) : Json(text);
}

Json toJson(const Table& table) {
  auto rows = Json::array();
  for (const auto& row : table.rows) {
    auto& object = rows.emplace_back(Json::object());
    for (std::size_t i = 0; i < row.size(); ++i) object[table.columns[i].name] = toJson(row[i], table.columns[i]);
  }
  return rows;
}

}  // namespace

void writeJson(std::ostream& out, const Table& table, const Style&) { out << toJson(table).dump(2) << '\n'; }

void writeJsonResults(std::ostream& out, const CallResults& results, const Style&) {
  auto all = Json::object();
  for (const auto& [name, value] : results.values) all[name] = toJson(value, Column{});
  for (const auto& [name, table] : results.tables) all[name] = toJson(table);
  out << all.dump(2) << '\n';
}

}  // namespace bukorval::host
