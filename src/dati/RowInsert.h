#pragma once

#include <string>
#include <string_view>

#include "ado/connection/Connection.h"
#include "values/Variant.h"

namespace bukorval::dati {

/// One row to insert into a table of the suite, column by column. Rows of the same shape share one prepared
/// statement.
class RowInsert {
 public:
  explicit RowInsert(std::string_view table) : table_(table) {}

  /// Empty and Null are written as NULL, text with its quotes doubled, dates so that they read alike everywhere.
  RowInsert& set(std::string_view column, const values::Variant& value);
  void run(ado::Connection& connection) const;
  /// Also gives the identity that the database gave the row.
  values::Variant runForIdentity(ado::Connection& connection) const;

 private:
  std::string table_, columns_, values_;
};

}  // namespace bukorval::dati
