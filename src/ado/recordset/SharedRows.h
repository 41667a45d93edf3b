#pragma once

#include <vector>

#include "ado/filter/FilterExpression.h"
#include "ado/recordset/RowStore.h"

namespace ado {

class RowCursor;

/// The rows that a set and its clones share.
struct SharedRows {
  explicit SharedRows(std::size_t width) : rows(width) {}

  bool matches(const FilterExpression& filter, Row row) const {
    return rows.isLive(row) && filter.matches(rows.cells(row));
  }
  /// The rows that match, ascending.
  std::vector<Row> matching(const FilterExpression& filter) const {
    std::vector<Row> found;
    for (Row row = 0; row < rows.size(); ++row)
      if (matches(filter, row)) found.push_back(row);
    return found;
  }

  RowStore rows;
  std::vector<RowCursor*> cursors;  ///< of the open sets on these rows
};

}  // namespace ado
