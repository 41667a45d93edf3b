#pragma once

#include <string>
#include <string_view>

#include "ado/connection/Connection.h"

namespace demo {

/// One row to insert, put together column by column.
class Inserimento {
 public:
  explicit Inserimento(std::string_view tabella) : tabella_(tabella) {}

  Inserimento& operator()(std::string_view colonna, const values::Variant& valore);
  void esegui(ado::Connection& connessione) const;
  /// The identity that the database gave the row.
  values::Variant eseguiConIdentita(ado::Connection& connessione) const;

 private:
  std::string tabella_, colonne_, valori_;
};

}  // namespace demo
