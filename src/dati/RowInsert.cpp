#include "dati/RowInsert.h"

#include "ado/connection/BulkInsert.h"
#include "frame/TestoSql.h"

namespace bukorval::dati {

RowInsert& RowInsert::set(std::string_view column, const values::Variant& value) {
  const std::string_view separator = columns_.empty() ? "" : ", ";
  columns_.append(separator).append(column);
  values_.append(separator).append(ado::literalOf(value));
  return *this;
}

void RowInsert::run(ado::Connection& connection) const {
  TestoSql sql;
  sql.riga(" INSERT INTO ", table_, " (", columns_, ")").riga(" VALUES (", values_, ")");
  connection.Execute(sql);
}

values::Variant RowInsert::runForIdentity(ado::Connection& connection) const {
  run(connection);
  return connection.Execute("SELECT @@IDENTITY")->Fields().Item(std::size_t{0}).Value();
}

}  // namespace bukorval::dati
