#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "host/output/CellText.h"
#include "host/output/Formats.h"

namespace bukorval::host {
namespace {

/// Written by hand around the library's texts: it keeps numbers as binary floating point, which loses digits.
std::string quoted(const std::string& text) {
  // A byte that is no UTF-8 has no place in JSON.
  return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

/// Infinity has no number in JSON.
bool isNumber(std::string_view text) {
  return std::ranges::all_of(text, [](char c) {
    return (c >= '0' && c <= '9') || std::string_view("+-.eE").find(c) != std::string_view::npos;
  });
}

/// Null, true or false, a number with the digits it has, or text; dates as ISO text.
std::string json(const values::Variant& value, const Column& column) {
  if (value.isNothing()) return "null";
  const std::string text = plainText(value, column);
  return value.get_if<bool>() || (value.isNumber() && isNumber(text)) ? text : quoted(text);
}

/// Writes the items between two brackets, one a line; nothing between them when there are none.
template <class Items, class Write>
void writeItems(std::ostream& out, std::string_view brackets, std::string_view indent, const Items& items,
                const Write& write) {
  out << brackets[0];
  bool first = true;
  for (const auto& item : items) {
    out << (first ? "\n" : ",\n") << indent << "  ";
    write(item);
    first = false;
  }
  if (!first) out << '\n' << indent;
  out << brackets[1];
}

void writeRows(std::ostream& out, const Table& table, const std::string& indent) {
  std::vector<std::string> keys;
  for (const auto& column : table.columns) keys.push_back(quoted(column.name) + ": ");
  const auto inner = indent + "  ";
  writeItems(out, "[]", indent, table.rows, [&](const auto& row) {
    std::size_t i = 0;
    writeItems(out, "{}", inner, row, [&](const auto& cell) {
      out << keys[i] << json(cell, table.columns[i]);
      ++i;
    });
  });
}

}  // namespace

void writeJson(std::ostream& out, const Table& table, const Style&) {
  writeRows(out, table, "");
  out << '\n';
}

void writeJsonResults(std::ostream& out, const CallResults& results, const Style&) {
  using Member = std::pair<std::string, const Table*>;
  std::vector<Member> members;
  for (const auto& [name, value] : results.values) members.emplace_back(quoted(name) + ": " + json(value, {}), nullptr);
  for (const auto& [name, table] : results.tables) members.emplace_back(quoted(name) + ": ", &table);
  writeItems(out, "{}", "", members, [&](const Member& member) {
    out << member.first;
    if (member.second) writeRows(out, *member.second, "  ");
  });
  out << '\n';
}

}  // namespace bukorval::host
