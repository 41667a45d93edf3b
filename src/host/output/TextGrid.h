#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/output/Formats.h"

namespace bukorval::host {

/// A table as the texts that people read, without the columns that they are not shown.
struct TextGrid {
  std::vector<const Column*> columns;
  std::vector<std::size_t> positions;  ///< of these columns in the table
  std::vector<std::string> titles;
  std::vector<std::vector<std::string>> rows;  ///< the totals last, when there are any
  std::vector<std::size_t> widths;             ///< in characters; a longer text goes on in the next line
  std::size_t dropped = 0;                     ///< columns that the width had no room for
};

/// Whether a column holds nothing in any row; in a table without rows none is empty.
bool isEmptyColumn(const Table& table, std::size_t column);

/// Each column as wide as its longest text. Left out, unless all were asked for: columns that are shown only on
/// request, and those that hold nothing, which were not asked for by name.
TextGrid textGrid(const Table& table, const Style& style);

/// Makes a grid no wider than `width` where that can be: texts and titles are wrapped, and when the columns still have
/// no room side by side, those go first that tell least, with the same text in most rows. The first column, those asked
/// for by name and, as long as there are others, those with a total stay.
void fit(TextGrid& grid, std::size_t width);

/// Which cells of a row are red: those that the table says, or negative numbers above the totals.
std::vector<bool> alarms(const TextGrid& grid, const Table& table, std::size_t row);

/// The lines of a row whose texts are wrapped: each has a text for every column.
std::vector<std::vector<std::string>> wrappedLines(const TextGrid& grid, const std::vector<std::string>& cells);

}  // namespace bukorval::host
