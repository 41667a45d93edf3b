#include <algorithm>
#include <string>
#include <string_view>

#include "host/output/Formats.h"
#include "host/output/TextGrid.h"
#include "language/Language.h"

namespace bukorval::host {
namespace {

/// Nothing is loaded from elsewhere, and nothing runs.
constexpr std::string_view kHead = R"(">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>bukorval</title>
<style>
:root { color-scheme: light dark; }
body { font: 15px/1.4 system-ui, sans-serif; margin: 1.5rem; }
div { overflow-x: auto; margin-bottom: 1.5rem; }
h2 { font-size: 1.1rem; margin: 0 0 .5rem; }
table { border-collapse: collapse; }
th, td { padding: .25rem .75rem; text-align: left; border-bottom: 1px solid #8884; white-space: nowrap; }
thead th { border-bottom: 2px solid #888; vertical-align: bottom; }
.n { text-align: right; font-variant-numeric: tabular-nums; }
.s td, tfoot td { font-weight: 600; }
tfoot td { border-top: 2px solid #888; }
.a { color: #c62828; }
@media (prefers-color-scheme: dark) { .a { color: #ff8a80; } }
</style>
</head>
<body>
)";
constexpr std::string_view kFoot = "</body>\n</html>\n";

std::string html(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '&': escaped += "&amp;"; break;
      case '<': escaped += "&lt;"; break;
      case '>': escaped += "&gt;"; break;
      case '"': escaped += "&quot;"; break;
      default: escaped += c;
    }
  }
  return escaped;
}

/// "n" for a number, "a" for what is red in a terminal.
std::string classes(bool number, bool alarm) {
  if (!number && !alarm) return "";
  return std::string(" class=\"") + (number ? "n" : "") + (number && alarm ? " " : "") + (alarm ? "a" : "") + '"';
}

void writeRow(std::ostream& out, const Table& table, const TextGrid& grid, std::size_t r) {
  const auto red = alarms(grid, table, r);
  out << (!table.looks.empty() && table.looks[r].subtotal ? "<tr class=\"s\">" : "<tr>");
  for (std::size_t i = 0; i < grid.columns.size(); ++i)
    out << "<td" << classes(grid.columns[i]->number, red[i]) << '>' << html(grid.rows[r][i]) << "</td>";
  out << "</tr>\n";
}

/// The names of groups of columns, above their titles.
void writeGroups(std::ostream& out, const TextGrid& grid) {
  out << "<tr>";
  for (std::size_t begin = 0, end = 0; begin < grid.columns.size(); begin = end) {
    const auto& group = grid.columns[begin]->group;
    for (end = begin + 1; end < grid.columns.size() && grid.columns[end]->group == group;) ++end;
    out << "<th colspan=\"" << end - begin << "\">" << html(group) << "</th>";
  }
  out << "</tr>\n";
}

void writeHead(std::ostream& out) {
  out << "<!DOCTYPE html>\n<html lang=\"" << (chosenLanguage() == Language::Italian ? "it" : "en") << kHead;
}

void writeTable(std::ostream& out, const Table& table, const Style& style) {
  const auto grid = textGrid(table, style);
  out << "<div><table>\n<thead>\n";
  if (std::ranges::any_of(grid.columns, [](const auto* column) { return !column->group.empty(); }))
    writeGroups(out, grid);
  out << "<tr>";
  for (std::size_t i = 0; i < grid.columns.size(); ++i)
    out << "<th" << classes(grid.columns[i]->number, false) << '>' << html(grid.titles[i]) << "</th>";
  out << "</tr>\n</thead>\n<tbody>\n";
  for (std::size_t r = 0; r < table.rows.size(); ++r) writeRow(out, table, grid, r);
  out << "</tbody>\n";
  if (!table.totals.empty()) {
    out << "<tfoot>\n";
    writeRow(out, table, grid, table.rows.size());
    out << "</tfoot>\n";
  }
  out << "</table></div>\n";
}

}  // namespace

void writeHtml(std::ostream& out, const Table& table, const Style& style) {
  writeHead(out);
  writeTable(out, table, style);
  out << kFoot;
}

void writeHtmlResults(std::ostream& out, const CallResults& results, const Style& style) {
  writeHead(out);
  writeEach(out, results, style, writeTable, [](std::ostream& to, const std::string& name, const Table&) {
    to << "<h2>" << html(tr(name)) << "</h2>\n";
  });
  out << kFoot;
}

}  // namespace bukorval::host
