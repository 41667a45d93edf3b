#pragma once

#include <string>
#include <string_view>

#include "ado/connection/Connection.h"
#include "values/Variant.h"

namespace bukorval::host {

/// One row to insert into a table of the suite, column by column. Rows of the same shape share one prepared
/// statement.
class RigaDati {
 public:
  explicit RigaDati(std::string_view tabella) : tabella_(tabella) {}

  /// Empty and Null are written as NULL, text with its quotes doubled, dates so that they read alike
  /// everywhere.
  RigaDati& colonna(std::string_view nome, const values::Variant& valore);
  void inserisci(ado::Connection& connessione) const;

 private:
  std::string tabella_, colonne_, valori_;
};

}  // namespace bukorval::host
