#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "dati/import/Problems.h"

namespace bukorval::sheet {

enum class RawKind {
  Text,
  Number,
  Boolean,
  Error,   ///< "#REF!"
  Unknown  ///< a formula without the value that it had
};

struct RawCell {
  std::size_t column;  ///< from 0
  RawKind kind;
  std::string text;
};

struct RawRow {
  std::size_t line;  ///< from 1
  std::vector<RawCell> cells;
};

/// A file as it is: a line of names, then lines of cells, of which the empty ones are missing.
struct RawTable {
  std::string file;
  bool lettered = false;   ///< a spreadsheet, whose cells have names and types; else every cell is text
  char decimalSign = '.';  ///< of numbers in text
  std::vector<std::string> header;
  std::vector<RawRow> rows;

  /// The name of a cell, "D7"; "" in a file without letters.
  std::string cellName(std::size_t line, std::size_t column) const;
};

/// Throws dati::Refused for a file that is no spreadsheet (.xlsx), is damaged, too large, or has no sheet whose first
/// cell is `firstName`.
RawTable readXlsx(const std::string& file, std::string_view firstName);
/// What is wrong with the text goes to `problems`. Throws dati::Refused when the file cannot be opened.
RawTable readCsvTable(const std::string& file, const std::string& encoding, dati::Problems& problems);

}  // namespace bukorval::sheet
