#pragma once

#include <sqlite3.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "ado/connection/Connection.h"
#include "engine/RowOrder.h"
#include "tsql/Catalog.h"

namespace sqlite {

/// Turns the rows of one statement into a record set. How each column is read is settled once, here, not per row.
class RowReader {
 public:
  /// @param order  by which the rows are sorted; empty when they come as they should.
  explicit RowReader(const std::vector<tsql::ResultColumn>& columns, std::vector<engine::SortKey> order = {});

  /// Steps the statement to its end; the set stands on its first row. A value that its column's type cannot hold
  /// throws values::Errore.
  ado::RecordsetPtr readAll(sqlite3* database, sqlite3_stmt* statement);
  /// An empty set for rows that are read one by one; on its only row.
  struct SingleRow {
    ado::RecordsetPtr set;
    std::span<values::Variant> cells;
  };
  SingleRow singleRow() const;
  /// Reads row by row, in the order of the engine, a statement that gives the columns that are wanted alone.
  void readEach(sqlite3* database, sqlite3_stmt* statement, const std::vector<bool>& wanted,
                std::span<values::Variant> cells, const std::function<void()>& each);

 private:
  enum class How : std::uint8_t { ByStorage, Int16, Int32, Int64, Decimal, Float, Text, Date, Bit };
  struct Column {
    How how;
    std::uint8_t scale;
    std::int64_t lastDate;  ///< dates repeat from row to row: the last one is kept converted
    values::Date lastDateValue;
  };
  static How howToRead(const tsql::Type& type);
  /// Into a cell that is Null.
  void readCell(sqlite3_value* value, std::size_t position, values::Variant& cell);
  static void readInteger(Column& column, std::int64_t value, values::Variant& cell);
  void readOther(const Column& column, int storage, sqlite3_value* value, values::Variant& cell);

  std::vector<tsql::ResultColumn> results_;
  std::vector<Column> columns_;
  std::vector<engine::SortKey> order_;
};

}  // namespace sqlite
