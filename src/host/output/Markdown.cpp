#include <string>
#include <string_view>

#include "host/output/Formats.h"
#include "host/output/TextGrid.h"
#include "language/Language.h"

namespace bukorval::host {
namespace {

/// A text that Markdown shows as it is.
std::string markdown(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    if (std::string_view("\\`*_[]<>&|~#").find(c) != std::string_view::npos) escaped += '\\';
    escaped += c;
  }
  return escaped;
}

template <class Texts, class Show>
void writeLine(std::ostream& out, const Texts& texts, const Show& show) {
  for (const auto& text : texts) out << "| " << show(text) << ' ';
  out << "|\n";
}

}  // namespace

void writeMarkdown(std::ostream& out, const Table& table, const Style& style) {
  const auto grid = textGrid(table, style);
  const auto totals = table.totals.empty() ? grid.rows.size() : table.rows.size();
  writeLine(out, grid.titles, markdown);
  writeLine(out, grid.columns, [](const Column* column) { return column->number ? "---:" : "---"; });
  for (std::size_t r = 0; r < grid.rows.size(); ++r)
    writeLine(out, grid.rows[r], [&](const std::string& text) {
      const auto shown = markdown(text);
      return r == totals && !shown.empty() ? "**" + shown + "**" : shown;
    });
}

void writeMarkdownResults(std::ostream& out, const CallResults& results, const Style& style) {
  writeEach(out, results, style, writeMarkdown, [](std::ostream& to, const std::string& name, const Table&) {
    to << "\n## " << markdown(tr(name)) << "\n\n";
  });
}

}  // namespace bukorval::host
