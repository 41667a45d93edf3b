#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "values/Export.h"
#include "values/Variant.h"

namespace ado {

class Connection;

/// Many rows for one table, in a transaction of the caller's: an engine may hold rows back and send them together. It
/// must go before its connection is closed.
class BUKORVAL_API BulkInsert {
 public:
  virtual ~BulkInsert() = default;

  /// @param values  one for each column, converted as an INSERT would; Empty and Null are NULL.
  /// Throws values::Errore for a value or row that the table cannot take: this one, or an earlier one held back. The
  /// transaction is then to be rolled back.
  virtual void add(const std::vector<values::Variant>& values) = 0;
  /// Sends what is held back. Rows without it are not written for sure.
  virtual void finish() = 0;
};

/// A value as it stands in a statement: NULL for Empty and Null, text with its quotes doubled, dates so that they read
/// alike everywhere.
BUKORVAL_API std::string literalOf(const values::Variant& value);

/// Sends each row as a text of its own.
std::unique_ptr<BulkInsert> insertByText(Connection& connection, std::string_view table,
                                         const std::vector<std::string_view>& columns);

}  // namespace ado
