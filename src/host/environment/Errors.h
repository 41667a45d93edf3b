#pragma once

#include <stdexcept>

namespace bukorval::host {

/// Exit codes of the program. A refusal and a run-time error leave with the state of the object.
enum ExitCode : int { exitOk = 0, exitUsage = 2, exitError = 99 };

/// The command line asks for something that does not make sense.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

}  // namespace bukorval::host
