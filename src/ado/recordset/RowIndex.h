#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <span>
#include <unordered_map>
#include <utility>
#include <vector>

#include "ado/recordset/RowKey.h"
#include "ado/recordset/RowStore.h"

namespace ado {

/// Rows by the key of a few fields. Follows appended rows by itself; an edited row is entered under its new key and
/// its old entry cleared together with others later, so that an edit costs no more than a few steps.
class RowIndex {
 public:
  RowIndex(const RowStore& rows, std::vector<std::size_t> fields) : rows_(rows), fields_(std::move(fields)) {}

  std::span<const std::size_t> fields() const { return fields_; }
  /// The rows with the key, ascending; rows that are deleted or had the key once may be among them.
  const std::vector<Row>& find(Key key);
  /// To be called before and after the cells of a row change.
  void leave(Row row);
  void enter(Row row);
  /// Rows whose key had to be computed.
  std::uint64_t rowsRead() const { return rowsRead_; }

 private:
  struct Bucket {
    std::vector<Row> rows;
    std::size_t stale = 0;  ///< entries known to have another key by now
    bool sorted = true;
  };
  Key keyAt(Row row);
  void put(Key key, Row row);
  void tidy(Key key, Bucket& bucket);

  const RowStore& rows_;
  std::vector<std::size_t> fields_;
  std::unordered_map<Key, Bucket> buckets_;
  Row indexed_ = 0;  ///< rows before it are in the buckets
  Key left_ = 0;     ///< of the row between leave and enter
  std::uint64_t rowsRead_ = 0;
};

/// The indexes of one set, one for each combination of fields that filters ask for more than once. A loop that sets
/// the same filter with other values builds one index and then looks only at the rows it finds.
class RowIndexes {
 public:
  explicit RowIndexes(const RowStore& rows) : rows_(rows) {}

  /// The index over the fields (ascending), or null when a scan is the better answer.
  RowIndex* find(std::span<const std::size_t> fields);
  /// To be called before and after the given fields of a row change.
  void leave(Row row, std::span<const std::size_t> changedFields);
  void enter(Row row, std::span<const std::size_t> changedFields);
  std::uint64_t rowsRead() const;

 private:
  void forEachWith(std::span<const std::size_t> changedFields, void (RowIndex::*step)(Row), Row row);

  const RowStore& rows_;
  std::list<RowIndex> indexes_;
  std::vector<std::vector<std::size_t>> askedOnce_;
};

}  // namespace ado
