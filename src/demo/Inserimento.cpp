#include "demo/Inserimento.h"

#include "values/Conversion.h"

namespace demo {
namespace {

std::string letterale(const values::Variant& valore) {
  if (valore.isNothing()) return "NULL";
  if (const auto* data = valore.get_if<values::Date>()) return "'" + data->toSql() + "'";
  if (valore.kind() != values::Kind::String) return values::toPlainText(valore);
  std::string testo = "N'";
  for (const char c : valore.as<std::string>()) testo.append(c == '\'' ? 2 : 1, c);
  return testo + "'";
}

}  // namespace

Inserimento& Inserimento::operator()(std::string_view colonna, const values::Variant& valore) {
  const std::string_view separatore = colonne_.empty() ? "" : ", ";
  colonne_.append(separatore).append(colonna);
  valori_.append(separatore).append(letterale(valore));
  return *this;
}

void Inserimento::esegui(ado::Connection& connessione) const {
  connessione.Execute("INSERT INTO " + tabella_ + " (" + colonne_ + ") VALUES (" + valori_ + ")");
}

values::Variant Inserimento::eseguiConIdentita(ado::Connection& connessione) const {
  esegui(connessione);
  return connessione.Execute("SELECT @@IDENTITY")->Fields().Item(std::size_t{0}).Value();
}

}  // namespace demo
