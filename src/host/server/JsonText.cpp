#include "host/server/JsonText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <nlohmann/json.hpp>

#include "host/output/CellText.h"
#include "language/Language.h"
#include "values/Conversion.h"
#include "values/NumberText.h"

namespace bukorval::host::server {
namespace {

using values::Variant;

/// Digits of a whole number that every reader of JSON keeps.
constexpr std::size_t kSafeDigits = 15;

bool isWhole(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  return !text.empty() && text.size() <= kSafeDigits && text.find_first_not_of("0123456789") == std::string_view::npos;
}

void appendInteger(std::string& out, std::int32_t number) {
  std::array<char, 16> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  out.append(digits.data(), end);
}

void appendNumber(std::string& out, const std::string& text) {
  if (isWhole(text))
    out += text;
  else
    out.append("\"").append(text).append("\"");
}

/// Items with commas between two brackets.
template <class Items, class Append>
void appendItems(std::string& out, std::string_view brackets, const Items& items, const Append& append) {
  out += brackets[0];
  bool first = true;
  for (const auto& item : items) {
    if (!first) out += ',';
    append(item);
    first = false;
  }
  out += brackets[1];
}

void appendColumn(std::string& out, const Column& column) {
  const auto flag = [&](const char* name, bool value) {
    out.append(",\"").append(name).append(value ? "\":true" : "\":false");
  };
  out += "{\"name\":";
  appendQuoted(out, column.name);
  out += ",\"title\":";
  appendQuoted(out, translated(column.title));
  flag("number", column.number);
  out.append(",\"decimals\":").append(column.number ? std::to_string(column.decimals) : "null");
  flag("percentage", column.percentage);
  flag("total", column.total);
  flag("secondary", column.secondary);
  out += ",\"group\":";
  appendQuoted(out, column.group);
  out += '}';
}

void appendLooks(std::string& out, const std::vector<RowLook>& looks) {
  appendItems(out, "[]", looks, [&](const RowLook& look) {
    out.append("{\"subtotal\":").append(look.subtotal ? "true" : "false").append(",\"alarm\":");
    std::vector<std::size_t> alarms;
    for (std::size_t i = 0; i < look.alarm.size(); ++i)
      if (look.alarm[i]) alarms.push_back(i);
    appendItems(out, "[]", alarms, [&](std::size_t column) { out += std::to_string(column); });
    out += '}';
  });
}

}  // namespace

void appendQuoted(std::string& out, std::string_view text) {
  const bool plain = std::ranges::all_of(text, [](char c) { return c >= ' ' && c < 127 && c != '"' && c != '\\'; });
  if (plain)
    out.append("\"").append(text).append("\"");
  else  // A byte that is no UTF-8 has no place in JSON.
    out += nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

void appendCell(std::string& out, const Variant& value, const Column& column) {
  using values::Kind;
  switch (value.kind()) {
    case Kind::Int16:
    case Kind::Int32:
      if (column.decimals == 0) return appendInteger(out, values::toInt32(value));
      [[fallthrough]];
    case Kind::Decimal:
      if (column.decimals > 0)
        out.append("\"").append(values::withDecimals(values::toDecimal(value), column.decimals)).append("\"");
      else
        appendNumber(out, plainText(value, column));
      return;
    case Kind::Double: return appendQuoted(out, plainText(value, column));
    case Kind::Boolean: out += value.as<bool>() ? "true" : "false"; return;
    case Kind::String: {
      const auto& text = value.as<std::string>();
      return appendQuoted(out, column.words ? translated(text) : std::string_view(text));
    }
    case Kind::Date: return appendQuoted(out, plainText(value, column));
    case Kind::Empty:
    case Kind::Null:
    case Kind::Object: break;
  }
  out += "null";
}

void appendTable(std::string& out, const Table& table, std::string_view title) {
  // An amount with its quotes and comma takes about ten characters.
  out.reserve(out.size() + 512 + table.rows.size() * table.columns.size() * 12);
  const auto row = [&](const std::vector<Variant>& cells) {
    std::size_t i = 0;
    appendItems(out, "[]", cells, [&](const Variant& cell) { appendCell(out, cell, table.columns[i++]); });
  };
  out += "{\"title\":";
  appendQuoted(out, translated(title));
  out += ",\"columns\":";
  appendItems(out, "[]", table.columns, [&](const Column& column) { appendColumn(out, column); });
  out += ",\"rows\":";
  appendItems(out, "[]", table.rows, row);
  out += ",\"totals\":";
  if (table.totals.empty())
    out += "null";
  else
    row(table.totals);
  if (!table.looks.empty()) {
    out += ",\"looks\":";
    appendLooks(out, table.looks);
  }
  out += '}';
}

}  // namespace bukorval::host::server
