#include "host/environment/Outcome.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <span>
#include <string_view>

#include "frame/Fallimento.h"
#include "host/environment/Errors.h"
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

/// Those that ask to be run again.
constexpr std::size_t kRepeatable = 2;

/// What they, and the object, say of what somebody has asked for.
constexpr Retelling kOfValues[] = {
    {"Arithmetic overflow error{}", "A number is too large: the database has no room for it"},
    {"Invalid object name 'CG18_ANADITTE'{}", "The database holds no company; `bukorval create` makes the tables"},
    {"The user has no permission for this ({}){}", "The database does not permit this to its user ({})"},
    {"Il budget di destinazione {}/{} non è definito {}", "There is no budget {}/{} to copy into"},
    {"L'esercizio di destinazione {}/{} non esiste {}", "There is no accounting year {}/{} to copy into"},
    {"I budget di origine e di destinazione hanno periodicità diverse {}",
     "The budgets to copy from and into have periods of different length"},
    {"I budget di origine e di destinazione contano i mesi da mesi diversi {}",
     "The budgets to copy from and into count their months from different ones"}};

const Retelling* find(std::span<const Retelling> texts, std::string_view message) {
  const auto found = std::ranges::find_if(texts, [&](const Retelling& one) {
    const std::string_view said = one.said;
    return message.starts_with(said.substr(0, said.find("{}")));
  });
  return found == texts.end() ? nullptr : &*found;
}

OutcomeKind kindOf(int state, std::string_view message) {
  if (const auto* const others = find(kOfOthers, message))
    return others - kOfOthers < static_cast<std::ptrdiff_t>(kRepeatable) ? OutcomeKind::Repeatable : OutcomeKind::Busy;
  return state == bdgStatoRifiutato || find(kOfValues, message) ? OutcomeKind::Refused : OutcomeKind::Failed;
}

/// An outcome of the object or of a statement.
Outcome ofState(int state, const char* message) {
  return {kindOf(state, message), state, retold(retold(message, kOfOthers), kOfValues)};
}

}  // namespace

Outcome currentOutcome() noexcept {
  try {
    throw;
  } catch (const UsageError& e) {
    return {OutcomeKind::Usage, exitUsage, e.what()};
  } catch (const Unanswered& e) {
    return {OutcomeKind::Unanswered, e.state(), e.what()};
  } catch (const Overtaken& e) {
    return {OutcomeKind::Overtaken, e.state(), e.what()};
  } catch (const dati::Failure& e) {
    return ofState(e.state(), e.what());
  } catch (const Fallimento& e) {
    return ofState(e.stato(), e.what());
  } catch (const ErroreArgomento& e) {
    return {OutcomeKind::Usage, exitUsage, e.what()};
  } catch (const std::exception& e) {
    return ofState(exitError, e.what());
  } catch (...) {
    return {OutcomeKind::Failed, exitError, "Unknown error"};
  }
}

}  // namespace bukorval::host
