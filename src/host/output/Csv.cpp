#include <string>
#include <vector>

#include "host/output/CellText.h"
#include "host/output/Formats.h"
#include "host/output/TextGrid.h"

namespace bukorval::host {
namespace {

std::string csvField(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char c : text) quoted.append(c == '"' ? 2 : 1, c);
  return quoted + '"';
}

}  // namespace

void writeCsv(std::ostream& out, const Table& table, const Style& style) {
  std::vector<std::size_t> shown;
  for (std::size_t i = 0; i < table.columns.size(); ++i)
    if (style.all || table.columns[i].wanted || !isEmptyColumn(table, i)) shown.push_back(i);
  const auto line = [&](const auto& textOf) {
    for (std::size_t k = 0; k < shown.size(); ++k) out << (k > 0 ? "," : "") << csvField(textOf(shown[k]));
    out << '\n';
  };
  line([&](std::size_t i) { return table.columns[i].name; });
  for (const auto& row : table.rows) line([&](std::size_t i) { return plainText(row[i], table.columns[i]); });
}

}  // namespace bukorval::host
