#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "ado/recordset/RowStore.h"

namespace ado {

/// The rows that pass a filter, ascending, while edits bring rows in and take rows out. A row taken out leaves a gap
/// that is closed when gaps prevail, so that emptying a long list one by one stays linear.
class FilteredRows {
 public:
  /// @param rows  ascending.
  void assign(std::vector<Row> rows);
  /// Shows or hides one row.
  void set(Row row, bool shown);
  std::size_t count() const { return count_; }

  std::optional<Row> first() const;
  std::optional<Row> last() const;
  std::optional<Row> after(Row row) const;
  std::optional<Row> before(Row row) const;

 private:
  /// Position of the first entry not before the row.
  std::size_t positionOf(Row row) const;
  void hide(std::size_t position);
  void insert(std::size_t position, Row row);

  std::vector<Row> entries_;  ///< ordered by row; a gap has its top bit set
  std::size_t begin_ = 0;     ///< every entry before it is a gap
  std::size_t count_ = 0;
  mutable std::size_t recent_ = 0;  ///< where the last look-up ended: moves go step by step
};

}  // namespace ado
