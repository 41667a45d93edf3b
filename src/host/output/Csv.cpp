#include <string>

#include "host/output/CellText.h"
#include "host/output/Formats.h"

namespace bukorval::host {
namespace {

std::string csvField(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char c : text) quoted.append(c == '"' ? 2 : 1, c);
  return quoted + '"';
}

}  // namespace

void writeCsv(std::ostream& out, const Table& table, const Style&) {
  for (std::size_t i = 0; i < table.columns.size(); ++i) out << (i > 0 ? "," : "") << csvField(table.columns[i].name);
  out << '\n';
  for (const auto& row : table.rows) {
    for (std::size_t i = 0; i < row.size(); ++i)
      out << (i > 0 ? "," : "") << csvField(plainText(row[i], table.columns[i]));
    out << '\n';
  }
}

}  // namespace bukorval::host
