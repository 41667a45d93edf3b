#include "host/Program.h"

#include <exception>
#include <iostream>

#include "dati/Failure.h"
#include "frame/Fallimento.h"
#include "host/CommandLine.h"
#include "host/Completion.h"
#include "host/Manual.h"
#include "host/environment/Environment.h"
#include "host/environment/Errors.h"
#include "host/environment/StandardStreams.h"
#include "host/output/SafeText.h"
#include "language/Language.h"
#include "object/Interfaccia.h"

namespace bukorval::host {
namespace {

/// What engines say of others who work on the database, whichever procedure met them.
constexpr Retelling kOfOthers[] = {
    {"Un altro utente ha modificato gli stessi dati: l'operazione è stata annullata e va ripetuta{}",
     "Another user has changed the same data: nothing was written, run the command again"},
    {"Un altro utente tiene gli stessi dati: l'operazione è stata annullata e va ripetuta{}",
     "Another user holds the same data: nothing was written, run the command again"},
    {"La connessione al database è caduta ({}){}", "The connection to the database was lost ({})"},
    {"I dati sono in uso da parte di un altro utente{}", "The data is in use by another user: nothing was written"},
    {"Il database è in uso da parte di un altro programma; atteso {} s{}",
     "The database is in use by another program; waited {} s"},
    {"Il database è in uso da parte di un altro programma{}", "The database is in use by another program"},
    {"Il database è in uso da parte di {}; atteso {} s{}", "The database is in use by {}; waited {} s"},
    {"Il database è in uso da parte di {}", "The database is in use by {}"}};

int failed(int code, const char* message) {
  std::cout << std::flush;
  // In one piece: others may write to the same place.
  std::cerr << "bukorval: " + safeText(retold(message, kOfOthers), Lines::Keep) + '\n';
  return code;
}

}  // namespace

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
