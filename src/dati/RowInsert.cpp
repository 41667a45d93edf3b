#include "dati/RowInsert.h"

#include "frame/TestoSql.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

std::string letterale(const values::Variant& valore) {
  switch (valore.kind()) {
    case values::Kind::Empty:
    case values::Kind::Null: return "NULL";
    case values::Kind::String: return "N" + testoDati(valore);
    case values::Kind::Date: return "'" + valore.as<values::Date>().toSql() + "'";
    case values::Kind::Boolean: return valore.as<bool>() ? "1" : "0";
    default: return values::toPlainText(valore);
  }
}

}  // namespace

RigaDati& RigaDati::colonna(std::string_view nome, const values::Variant& valore) {
  if (!colonne_.empty()) {
    colonne_ += ", ";
    valori_ += ", ";
  }
  colonne_ += nome;
  valori_ += letterale(valore);
  return *this;
}

void RigaDati::inserisci(ado::Connection& connessione) const {
  TestoSql sql;
  sql.riga(" INSERT INTO ", tabella_, " (", colonne_, ")").riga(" VALUES (", valori_, ")");
  connessione.Execute(sql);
}

}  // namespace bukorval::host
