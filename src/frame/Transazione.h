#pragma once

#include "ado/connection/Connection.h"

namespace bukorval {

/// A transaction that ends with its scope: rolled back unless it was committed. A rollback that fails is ignored,
/// because the failure that led to it is the one to report.
class Transazione {
 public:
  explicit Transazione(ado::Connection& connessione) : connessione_(connessione) { connessione_.BeginTrans(); }
  ~Transazione() {
    if (aperta_) annulla();
  }
  Transazione(const Transazione&) = delete;
  Transazione& operator=(const Transazione&) = delete;

  void conferma() {
    connessione_.CommitTrans();
    aperta_ = false;
  }
  void annulla() noexcept {
    aperta_ = false;
    try {
      connessione_.RollbackTrans();
    } catch (...) {
    }
  }

 private:
  ado::Connection& connessione_;
  bool aperta_ = true;
};

}  // namespace bukorval
