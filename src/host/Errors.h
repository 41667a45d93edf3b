#pragma once

#include <stdexcept>
#include <string>

#include "frame/Enumerazioni.h"

namespace bukorval::host {

/// Exit codes of the program.
enum CodiceUscita : int { uscitaOk = 0, uscitaRifiutato = 1, uscitaUso = 2, uscitaErrore = 99 };

/// A command that ends early: its exit code, and what goes to standard error.
class Interrotto : public std::runtime_error {
 public:
  Interrotto(CodiceUscita codice, const std::string& messaggio) : std::runtime_error(messaggio), codice_(codice) {}
  CodiceUscita codice() const { return codice_; }

 private:
  CodiceUscita codice_;
};

/// The command line asks for something that does not make sense.
struct ErroreUso : Interrotto {
  explicit ErroreUso(const std::string& messaggio) : Interrotto(uscitaUso, messaggio) {}
};

/// The data or the selection does not allow the command.
struct Rifiuto : Interrotto {
  explicit Rifiuto(const std::string& messaggio) : Interrotto(uscitaRifiutato, messaggio) {}
};

}  // namespace bukorval::host
