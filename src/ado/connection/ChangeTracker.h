#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "values/Export.h"
#include "values/Variant.h"

namespace ado {

/// A column of a changed row. A row that is new has nothing before, one that is gone nothing after.
struct ColumnChange {
  std::string name;
  values::Variant before, after;
};

/// The key's columns come with every row, of the others those that differ.
struct RowChange {
  enum class Kind : std::uint8_t { Inserted, Updated, Deleted };
  std::string table;
  Kind kind = Kind::Updated;
  std::vector<ColumnChange> columns;
};

/// Changes in a text of the engine's own, good for the database they come from.
struct ChangeSet {
  std::string text;       ///< "" when nothing changed
  std::int64_t rows = 0;  ///< that differ
};

/// What an engine can tell and take back of the changes on one connection.
class BUKORVAL_API ChangeTracker {
 public:
  virtual ~ChangeTracker() = default;

  /// From now on, for these tables.
  virtual void start(const std::vector<std::string_view>& tables) = 0;
  /// What has changed since the start, and ends. Rows that changed and changed back are not in it.
  virtual ChangeSet finish() = 0;
  /// Ends and forgets what was tracked.
  virtual void cancel() noexcept = 0;

  virtual std::vector<RowChange> read(const std::string& changes) = 0;
  /// Puts every row back as it was before. When some have changed since, writes nothing and gives those: what the
  /// change left in them, and what is there now. A row that is gone or there again has nothing but equal values.
  /// @param stamps  columns that every later change writes: a difference in these alone is none.
  virtual std::vector<RowChange> takeBack(const std::string& changes, const std::vector<std::string_view>& stamps) = 0;
};

}  // namespace ado
