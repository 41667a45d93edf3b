#include "dati/RowInsert.h"

#include "frame/TestoSql.h"
#include "values/Conversion.h"

namespace bukorval::dati {
namespace {

std::string literal(const values::Variant& value) {
  switch (value.kind()) {
    case values::Kind::Empty:
    case values::Kind::Null: return "NULL";
    case values::Kind::String: return "N" + testoDati(value);
    case values::Kind::Date: return "'" + value.as<values::Date>().toSql() + "'";
    case values::Kind::Boolean: return value.as<bool>() ? "1" : "0";
    default: return values::toPlainText(value);
  }
}

}  // namespace

RowInsert& RowInsert::set(std::string_view column, const values::Variant& value) {
  const std::string_view separator = columns_.empty() ? "" : ", ";
  columns_.append(separator).append(column);
  values_.append(separator).append(literal(value));
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
