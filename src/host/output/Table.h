#pragma once

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ado/recordset/Recordset.h"
#include "values/Variant.h"

namespace bukorval::host {

/// One column of a table to show.
struct Column {
  std::string name;         ///< heads CSV and is the key in JSON
  std::string title;        ///< heads the aligned table
  bool number = false;      ///< right-aligned
  int decimals = 0;         ///< decimals of a number
  bool percentage = false;  ///< a ratio that people read as a percentage
  bool total = false;       ///< summed in the totals row
  bool secondary = false;   ///< in the aligned table only on request
  std::string group = {};   ///< heads neighbouring columns that share it, above their titles in the aligned table
  bool words = false;       ///< its texts are the program's, so that people read them in their language
  bool wanted = false;      ///< asked for by name: shown though it is empty
};

/// What a row of the aligned table is among the others.
struct RowLook {
  bool subtotal = false;
  std::vector<bool> alarm;  ///< by column: red, whatever its sign
};

/// What a command shows, independent of the format.
struct Table {
  std::vector<Column> columns;
  std::vector<std::vector<values::Variant>> rows;
  std::vector<values::Variant> totals;  ///< one cell per column, or empty for no totals row
  std::vector<RowLook> looks = {};      ///< of the rows, the totals last; without any, negative numbers are red

  /// Nothing when there is no such column.
  std::optional<std::size_t> position(std::string_view name) const;
  /// The same by name or, failing that, by title.
  std::optional<std::size_t> positionOf(std::string_view nameOrTitle) const;
  /// Marks columns that the aligned table shows only on request; names it does not have are passed over.
  void hide(std::initializer_list<std::string_view> names);
  /// This table with the named columns alone, in that order, each given by its name or its title in any case. Names
  /// that it does not have are passed over.
  Table with(const std::vector<std::string>& names) const;
  /// Fills the totals row with the sums of the columns marked for it; a column without values stays Null.
  void addTotals();
};

/// Reads a record set from its first row; the titles come from the field names, padding is trimmed.
Table tableOf(ado::Recordset& rs);

}  // namespace bukorval::host
