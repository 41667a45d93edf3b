#pragma once

#include "ado/connection/Connection.h"

namespace bukorval {

/// The identity of the row that the connection has just inserted; nothing else may run on it in between.
inline values::Variant nuovaIdentita(ado::Connection& connessione) {
  const auto righe = connessione.Execute("SELECT @@IDENTITY");
  righe->MoveFirst();
  return righe->Fields().Item(std::size_t{0}).Value();
}

}  // namespace bukorval
