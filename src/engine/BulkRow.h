#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/LiteralConversion.h"
#include "tsql/Catalog.h"
#include "values/Variant.h"

namespace engine {

/// What the rows of a bulk insert are turned into: the values that literals in an INSERT would give.
class BulkRow {
 public:
  /// Throws values::Errore, in the words of a text, for a table or column that there is not.
  BulkRow(const tsql::Catalog& catalog, std::string_view table, const std::vector<std::string_view>& columns);

  /// The names as the table writes them.
  const std::string& table() const { return table_; }
  const std::vector<Binding>& columns() const { return columns_; }

  /// Nothing is NULL. A view shows the value's own text, or one that is good until the column's next value.
  /// Throws values::Errore in SQL Server's words for a value that the column cannot take.
  std::optional<BoundValue> convert(std::size_t column, const values::Variant& value);

 private:
  std::string table_;
  std::vector<Binding> columns_;
  std::vector<tsql::Literal> literals_;
};

}  // namespace engine
