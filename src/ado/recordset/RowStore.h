#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "values/Variant.h"

namespace ado {

/// Number of a row, in order of arrival; a deleted row's number is not used again.
using Row = std::uint32_t;

/// The cells of a set, row by row, in blocks that double in size: growing moves nothing, so a row's address holds
/// for the life of the store.
class RowStore {
 public:
  /// @param width  cells of a row, at least one.
  explicit RowStore(std::size_t width) : width_(width) { assert(width > 0); }
  ~RowStore();
  RowStore(const RowStore&) = delete;
  RowStore& operator=(const RowStore&) = delete;

  std::size_t width() const { return width_; }
  /// A new row at the end, all Null.
  std::span<values::Variant> append();
  /// A new row at the end that takes over the given cells.
  void append(std::span<values::Variant> cells);
  std::span<values::Variant> cells(Row row) const;

  /// Rows ever added.
  Row size() const { return size_; }
  Row live() const { return size_ - removed_; }
  bool isLive(Row row) const {
    assert(row < size_);
    return removed_ == 0 || row >= gone_.size() || !gone_[row];
  }
  /// Marks a row as deleted; its cells stay, because a clone may still be reading them.
  void remove(Row row);

  /// The live rows in order.
  std::optional<Row> first() const;
  std::optional<Row> last() const;
  std::optional<Row> after(Row row) const;
  std::optional<Row> before(Row row) const;

 private:
  /// Where the next row's cells go; not yet constructed, so that memory is touched only row by row.
  values::Variant* nextPlace();
  void grow();
  void count();

  std::size_t width_;
  std::vector<values::Variant*> blocks_;
  values::Variant* next_ = nullptr;
  values::Variant* blockEnd_ = nullptr;
  Row size_ = 0;
  std::vector<bool> gone_;  ///< empty until a row is deleted
  Row removed_ = 0;
  Row begin_ = 0;  ///< every row before it is deleted
  Row end_ = 0;    ///< every row from it on is deleted
};

}  // namespace ado
