#pragma once

#include <cstdint>
#include <string>

namespace bukorval::host {

enum class OutcomeKind : std::uint8_t {
  Usage,       ///< asked for in a way that makes no sense
  Refused,     ///< the data does not allow it
  Unanswered,  ///< it needs a yes first
  Overtaken,   ///< others have changed it meanwhile
  Busy,        ///< others hold the data: again later
  Repeatable,  ///< others were in the way at the same moment and nothing was written: again at once
  Failed       ///< a run-time error
};

/// How a command ended that did not succeed.
struct Outcome {
  OutcomeKind kind = OutcomeKind::Failed;
  int code = 0;         ///< exit code of the program
  std::string message;  ///< in the program's language; of a run-time error as the object or an engine said it
};

/// Of the exception that is being handled.
Outcome currentOutcome() noexcept;

}  // namespace bukorval::host
