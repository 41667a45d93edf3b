#pragma once

#include <stdexcept>

#include "dati/Failure.h"

namespace bukorval::host {

/// Exit codes of the program. A refusal and a run-time error leave with the state of the object.
enum ExitCode : int { exitOk = 0, exitUsage = 2, exitError = 99 };

/// The command line asks for something that does not make sense.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Somebody would have to agree first, and nobody was there to be asked.
struct Unanswered : dati::Refused {
  using dati::Refused::Refused;
};

/// What was to be written over has been changed by others meanwhile.
struct Overtaken : dati::Refused {
  using dati::Refused::Refused;
};

}  // namespace bukorval::host
