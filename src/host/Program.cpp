#include "host/Program.h"

#include <iostream>

#include "host/CommandLine.h"
#include "host/Completion.h"
#include "host/Manual.h"
#include "host/environment/Environment.h"
#include "host/environment/Errors.h"
#include "host/environment/Outcome.h"
#include "host/environment/StandardStreams.h"
#include "host/output/SafeText.h"
#include "language/Language.h"

namespace bukorval::host {
int runProgram(int argc, const char* const* argv) noexcept {
  try {
    prepareStandardStreams();
    chooseLanguage(languageOfEnvironment());
    if (completeWords(argc, argv)) return exitOk;
    if (writeManual(argc, argv)) {
      flushOutput();
      return exitOk;
    }
    Environment environment;
    const int code = runCommandLine(argc, argv, environment);
    flushOutput();
    return code;
  } catch (...) {
    const auto outcome = currentOutcome();
    std::cout << std::flush;
    // In one piece: others may write to the same place.
    std::cerr << "bukorval: " + safeText(outcome.message, Lines::Keep) + '\n';
    return outcome.code;
  }
}

}  // namespace bukorval::host
