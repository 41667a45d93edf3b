#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "host/output/CellText.h"
#include "host/output/Formats.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::host {
namespace {

/// Longer descriptions are cut, unless everything is asked for.
constexpr std::size_t kLongestDescription = 30;
constexpr std::string_view kBold = "\033[1m";
constexpr std::string_view kRed = "\033[31m";
constexpr std::string_view kEndOfRed = "\033[39m";
constexpr std::string_view kEnd = "\033[0m";

/// The table as texts, without the columns that hold nothing.
struct TextGrid {
  std::vector<const Column*> columns;
  std::vector<std::size_t> positions;  ///< of these columns in the table
  std::vector<std::size_t> widths;
  std::vector<std::vector<std::string>> rows;  ///< the totals last, when there are any
};

bool isEmptyColumn(const Table& table, std::size_t column) {
  return std::ranges::all_of(table.rows, [&](const auto& row) { return values::isBlank(row[column]); });
}

std::string cellText(const values::Variant& cell, const Column& column, const Style& style) {
  auto text = humanText(cell, column, style.separator);
  const bool whole = style.all || !column.name.ends_with("_DESCR");
  if (whole || values::length(text) <= kLongestDescription) return text;
  return std::string(values::rtrim(values::left(text, kLongestDescription - 1))) + "…";
}

TextGrid layOut(const Table& table, const Style& style) {
  TextGrid grid;
  grid.rows.resize(table.rows.size() + (table.totals.empty() ? 0 : 1));
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    const Column& column = table.columns[i];
    if (!style.all && (column.secondary || isEmptyColumn(table, i))) continue;
    std::size_t width = values::length(column.title);
    for (std::size_t r = 0; r < grid.rows.size(); ++r) {
      const auto& cell = r < table.rows.size() ? table.rows[r][i] : table.totals[i];
      auto& text = grid.rows[r].emplace_back(cellText(cell, column, style));
      width = std::max(width, values::length(text));
    }
    grid.columns.push_back(&column);
    grid.positions.push_back(i);
    grid.widths.push_back(width);
  }
  return grid;
}

std::string padded(std::string_view text, std::size_t width, bool right) {
  const std::string blanks(width - values::length(text), ' ');
  return right ? blanks + std::string(text) : std::string(text) + blanks;
}

std::string titleLine(const TextGrid& grid) {
  std::string text;
  for (std::size_t i = 0; i < grid.columns.size(); ++i) {
    if (i > 0) text += "  ";
    text += padded(grid.columns[i]->title, grid.widths[i], grid.columns[i]->number);
  }
  return std::string(values::rtrim(text));
}

/// Visits the groups of neighbouring columns: where one begins, the column after it, and the width it takes.
template <class Visit>
void forEachGroup(const TextGrid& grid, const Visit& visit) {
  for (std::size_t begin = 0; begin < grid.columns.size();) {
    std::size_t width = grid.widths[begin], end = begin + 1;
    for (; end < grid.columns.size() && grid.columns[end]->group == grid.columns[begin]->group; ++end)
      width += 2 + grid.widths[end];
    visit(begin, end, width);
    begin = end;
  }
}

/// The name of a group fits above its columns.
void widenGroups(TextGrid& grid) {
  forEachGroup(grid, [&](std::size_t begin, std::size_t end, std::size_t width) {
    const auto needed = values::length(grid.columns[begin]->group);
    if (needed > width) grid.widths[end - 1] += needed - width;
  });
}

std::string groupLine(const TextGrid& grid) {
  std::string text;
  forEachGroup(grid, [&](std::size_t begin, std::size_t, std::size_t width) {
    text += (begin > 0 ? "  " : "") + values::padRight(grid.columns[begin]->group, width);
  });
  return std::string(values::rtrim(text));
}

std::string ruler(const TextGrid& grid) {
  std::string text;
  for (std::size_t i = 0; i < grid.widths.size(); ++i) {
    text += std::string(i > 0 ? 2 : 0, ' ') + std::string(grid.widths[i], '-');
  }
  return text;
}

/// @param red  tells which cells are.
template <class Red>
std::string rowLine(const TextGrid& grid, const std::vector<std::string>& cells, const Red& red) {
  std::string text;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (i > 0) text += "  ";
    const auto aligned = padded(cells[i], grid.widths[i], grid.columns[i]->number);
    text += red(i) ? std::string(kRed).append(aligned).append(kEndOfRed) : aligned;
  }
  return std::string(values::rtrim(text));
}

}  // namespace

void writeAligned(std::ostream& out, const Table& table, const Style& style) {
  // A heading of dozens of empty columns would say less.
  if (table.rows.empty()) {
    out << "No rows\n";
    return;
  }
  auto grid = layOut(table, style);
  widenGroups(grid);
  const auto bold = [&](const std::string& text, bool wanted = true) {
    return style.colour && wanted ? std::string(kBold).append(text).append(kEnd) : text;
  };
  const auto line = [&](std::size_t r) {
    const auto& cells = grid.rows[r];
    const bool totals = r == table.rows.size();
    return rowLine(grid, cells, [&](std::size_t i) {
      if (!style.colour) return false;
      if (!table.looks.empty()) return static_cast<bool>(table.looks[r].alarm[grid.positions[i]]);
      return !totals && grid.columns[i]->number && cells[i].starts_with('-');
    });
  };
  if (const auto groups = groupLine(grid); !groups.empty()) out << bold(groups) << '\n';
  out << bold(titleLine(grid)) << '\n' << ruler(grid) << '\n';
  for (std::size_t r = 0; r < table.rows.size(); ++r)
    out << bold(line(r), !table.looks.empty() && table.looks[r].subtotal) << '\n';
  if (!table.totals.empty()) out << ruler(grid) << '\n' << bold(line(table.rows.size())) << '\n';
}

}  // namespace bukorval::host
