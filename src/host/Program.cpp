#include "host/Program.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "host/Arguments.h"
#include "host/Environment.h"
#include "host/Errors.h"
#include "host/PropertyOptions.h"
#include "host/commands/Command.h"
#include "object/Interfaccia.h"

namespace bukorval::host {
namespace {

constexpr const char* kDescrizione =
    "bukorval: budgets of an accounting suite, on the command line.\n"
    "A budget is a type and a subtype; its cards hold budget, actual, order and forecast values by period.";

constexpr const char* kPiede =
    "A first tour:\n"
    "  bukorval create demo.db --demo            make a database with a demo company\n"
    "  bukorval budgets -d demo.db               see which budgets it defines\n"
    "  bukorval grid -d demo.db -t 0 -s 01 -y 2025   the cards of one, with totals\n"
    "  bukorval COMMAND --help                   what a command does, with an example\n\n"
    "BUKORVAL_DATABASE stands for -d, NO_COLOR turns colour off.\n"
    "Exit codes: 0 done, 1 refused, 2 wrong command line, 99 run-time error.";

void dichiara(CLI::App& app, Ambiente& ambiente) {
  app.require_subcommand(1);
  app.set_version_flag("--version", "bukorval 0.1.0");
  app.footer(kPiede);
  app.get_formatter()->column_width(36);
  dichiaraOpzioni(app, ambiente);
  for (const auto& comando : comandi()) {
    auto* sotto = app.add_subcommand(std::string(comando.nome), std::string(comando.descrizione));
    sotto->fallthrough();
    sotto->footer("Example:\n" + std::string(comando.esempio) +
                  "\n\nThe shared options (database, selection, format) are listed by bukorval --help.");
    comando.prepara(*sotto, ambiente);
  }
}

/// A negative number would be taken for an option: a blank in front of it makes it a value, and numbers are
/// read with their blanks trimmed. The parser wants its arguments last to first.
std::vector<std::string> argomenti(int argc, const char* const* argv) {
  std::vector<std::string> testi(argv + 1, argv + argc);
  for (auto& testo : testi) {
    if (testo.starts_with('-') && leggiArgomento(testo).isNumber()) testo.insert(0, 1, ' ');
  }
  std::ranges::reverse(testi);
  return testi;
}

int usoErrato(const CLI::App& app, const CLI::ParseError& errore) {
  if (app.exit(errore) == 0) return uscitaOk;
  const auto resto = app.remaining();
  if (errore.get_name() == "RequiredError" && !resto.empty()) std::cerr << "Unknown command: " << resto.front() << '\n';
  return uscitaUso;
}

int fallito(int codice, const char* messaggio) {
  std::cout << std::flush;
  std::cerr << "bukorval: " << messaggio << '\n';
  return codice;
}

}  // namespace

int eseguiProgramma(int argc, const char* const* argv) noexcept {
  try {
    Ambiente ambiente;
    CLI::App app(kDescrizione, "bukorval");
    dichiara(app, ambiente);
    try {
      app.parse(argomenti(argc, argv));
    } catch (const CLI::ParseError& e) {
      return usoErrato(app, e);
    }
    return uscitaOk;
  } catch (const Interrotto& e) {
    return fallito(e.codice(), e.what());
  } catch (const ErroreArgomento& e) {
    return fallito(uscitaUso, e.what());
  } catch (const std::exception& e) {
    return fallito(uscitaErrore, e.what());
  } catch (...) {
    return fallito(uscitaErrore, "Unknown error");
  }
}

}  // namespace bukorval::host
