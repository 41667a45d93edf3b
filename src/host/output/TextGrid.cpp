#include "host/output/TextGrid.h"

#include <algorithm>

#include "host/output/CellText.h"
#include "language/Language.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::host {

bool isEmptyColumn(const Table& table, std::size_t column) {
  return !table.rows.empty() &&
         std::ranges::all_of(table.rows, [&](const auto& row) { return values::isBlank(row[column]); });
}

TextGrid textGrid(const Table& table, const Style& style) {
  TextGrid grid;
  grid.rows.resize(table.rows.size() + (table.totals.empty() ? 0 : 1));
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    const Column& column = table.columns[i];
    if (!style.all && !column.wanted && (column.secondary || isEmptyColumn(table, i))) continue;
    grid.titles.emplace_back(translated(column.title));
    std::size_t width = values::length(grid.titles.back());
    for (std::size_t r = 0; r < grid.rows.size(); ++r) {
      const auto& cell = r < table.rows.size() ? table.rows[r][i] : table.totals[i];
      const auto& text = grid.rows[r].emplace_back(humanText(cell, column, style.separator));
      width = std::max(width, values::length(text));
    }
    grid.columns.push_back(&column);
    grid.positions.push_back(i);
    grid.widths.push_back(width);
  }
  return grid;
}

std::vector<bool> alarms(const TextGrid& grid, const Table& table, std::size_t row) {
  std::vector<bool> red;
  for (std::size_t i = 0; i < grid.columns.size(); ++i) {
    red.push_back(!table.looks.empty()
                      ? table.looks[row].alarm[grid.positions[i]]
                      : row < table.rows.size() && grid.columns[i]->number && grid.rows[row][i].starts_with('-'));
  }
  return red;
}

}  // namespace bukorval::host
