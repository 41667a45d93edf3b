#pragma once

#include <stdexcept>
#include <string>

#include "object/CLSKORVAL.h"

namespace bukorval::dati {

/// A step that ends early. Its state is the object's: bdgStatoRifiutato when it was refused, bdgStatoErrore after a
/// run-time error.
class Failure : public std::runtime_error {
 public:
  Failure(BdgStato state, const std::string& message) : std::runtime_error(message), state_(state) {}
  BdgStato state() const { return state_; }

 private:
  BdgStato state_;
};

/// The data does not allow the step.
struct Refused : Failure {
  explicit Refused(const std::string& message) : Failure(bdgStatoRifiutato, message) {}
};

/// Throws the object's outcome as a Failure when its last operation did not succeed.
inline void requireSuccess(const CLSKORVAL& budget) {
  if (budget.Stato() != bdgStatoOk) throw Failure(budget.Stato(), budget.errore());
}

}  // namespace bukorval::dati
