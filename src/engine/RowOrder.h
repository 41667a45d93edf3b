#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "tsql/Statement.h"
#include "values/Variant.h"

/// The order of a query's rows, where the rows are sorted after they were read: for rows in memory this is much cheaper
/// than an engine's own sort, which packs every column of a row and unpacks it again.
namespace engine {

struct SortKey {
  std::size_t column;  ///< of the result
  bool descending = false;
};

/// The keys by which a query's rows can be sorted after they were read; none when the engine must do it, because what
/// it sorts by is no column of the result, or because the order decides which rows there are.
std::vector<SortKey> orderAfterReading(const tsql::Select& select);

/// Sorts whole rows; rows that are equal stay as they came. Null comes first.
/// @param rows  the cells of each row; they keep their places, their values move.
void sortRows(std::vector<std::span<values::Variant>>& rows, const std::vector<SortKey>& keys);

}  // namespace engine
