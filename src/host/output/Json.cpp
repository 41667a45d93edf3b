#include <algorithm>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <string_view>

#include "host/output/CellText.h"
#include "host/output/Formats.h"

namespace bukorval::host {
namespace {

/// Handed on in large pieces: a stream costs more for each cell than the cell.
class Text {
 public:
  explicit Text(std::ostream& out) : out_(out) {}
  Text(const Text&) = delete;
  Text& operator=(const Text&) = delete;
  ~Text() { handOn(); }

  Text& operator<<(std::string_view part) {
    text_.append(part);
    return *this;
  }
  Text& operator<<(char part) {
    text_ += part;
    return *this;
  }
  /// Between two rows.
  void pause() {
    if (text_.size() >= kPiece) handOn();
  }

 private:
  static constexpr std::size_t kPiece = 65536;
  void handOn() {
    out_ << text_;
    text_.clear();
  }

  std::ostream& out_;
  std::string text_;
};

std::string quoted(const std::string& text) {
  const bool plain = std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~' && c != '"' && c != '\\'; });
  if (plain) return '"' + text + '"';
  // A byte that is no UTF-8 has no place in JSON.
  return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

/// Infinity has no number in JSON.
bool isNumber(std::string_view text) { return text.find_first_not_of("0123456789+-.eE") == std::string_view::npos; }

/// Null, true or false, a number with the digits it has, or text; dates as ISO text. By hand around the library's
/// texts: it keeps numbers as binary floating point, which loses digits.
std::string json(const values::Variant& value, const Column& column) {
  if (value.isNothing()) return "null";
  const std::string text = plainText(value, column);
  return value.get_if<bool>() || (value.isNumber() && isNumber(text)) ? text : quoted(text);
}

/// Writes the items between two brackets, one a line; nothing between them when there are none.
template <class Items, class Write>
void writeItems(Text& out, std::string_view brackets, std::string_view indent, const Items& items, const Write& write) {
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

void writeRows(Text& out, const Table& table, const std::string& indent) {
  std::vector<std::string> keys;
  for (const auto& column : table.columns) keys.push_back(quoted(column.name) + ": ");
  const auto inner = indent + "  ";
  writeItems(out, "[]", indent, table.rows, [&](const auto& row) {
    std::size_t i = 0;
    writeItems(out, "{}", inner, row, [&](const auto& cell) {
      out << keys[i] << json(cell, table.columns[i]);
      ++i;
    });
    out.pause();
  });
}

}  // namespace

void writeJson(std::ostream& stream, const Table& table, const Style&) {
  Text out(stream);
  writeRows(out, table, "");
  out << '\n';
}

void writeJsonResults(std::ostream& stream, const CallResults& results, const Style&) {
  Text out(stream);
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
