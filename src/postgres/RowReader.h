#pragma once

#include <libpq-fe.h>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ado/connection/Connection.h"
#include "tsql/Catalog.h"

namespace postgres {

/// A value as the server writes it.
values::Variant parsedValue(std::string_view text, const tsql::Type& type);

/// Turns the result of one statement into a record set. How each column is read is settled once, here, not per row.
class RowReader {
 public:
  explicit RowReader(const std::vector<tsql::ResultColumn>& columns);

  /// The set stands on its first row. A value that its column's type cannot hold throws values::Errore.
  ado::RecordsetPtr readAll(const PGresult* result);
  /// Each row in one set, visited before the next is read.
  void readEach(const PGresult* result, const ado::RowVisitor& visit);

 private:
  struct Column {
    tsql::Type type;
    std::string lastText;  ///< dates repeat from row to row: the last one is kept converted
    values::Date lastDate;
  };
  void readRow(const PGresult* result, int row, std::span<values::Variant> cells);
  static void read(Column& column, std::string_view text, values::Variant& cell);

  std::vector<tsql::ResultColumn> results_;
  std::vector<Column> columns_;
};

}  // namespace postgres
