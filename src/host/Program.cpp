#include "host/Program.h"

#include <exception>
#include <iostream>

#include "dati/Failure.h"
#include "frame/Fallimento.h"
#include "host/CommandLine.h"
#include "host/Completion.h"
#include "host/environment/Environment.h"
#include "host/environment/Errors.h"
#include "host/environment/StandardStreams.h"
#include "host/output/SafeText.h"
#include "language/Language.h"
#include "object/Interfaccia.h"

namespace bukorval::host {
namespace {

int failed(int code, const char* message) {
  std::cout << std::flush;
  std::cerr << "bukorval: " << safeText(message, Lines::Keep) << '\n';
  return code;
}

}  // namespace

int runProgram(int argc, const char* const* argv) noexcept {
  try {
    prepareStandardStreams();
    chooseLanguage(languageOfEnvironment());
    if (completeWords(argc, argv)) return exitOk;
    Environment environment;
    const int code = runCommandLine(argc, argv, environment);
    flushOutput();
    return code;
  } catch (const UsageError& e) {
    return failed(exitUsage, e.what());
  } catch (const dati::Failure& e) {
    return failed(e.state(), e.what());
  } catch (const Fallimento& e) {
    return failed(e.stato(), e.what());
  } catch (const ErroreArgomento& e) {
    return failed(exitUsage, e.what());
  } catch (const std::exception& e) {
    return failed(exitError, e.what());
  } catch (...) {
    return failed(exitError, "Unknown error");
  }
}

}  // namespace bukorval::host
