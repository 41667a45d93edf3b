#pragma once

#include <exception>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "frame/Contesto.h"
#include "frame/Fallimento.h"

namespace bukorval {

/// Runs a body; whatever it throws leaves as a Fallimento. A run-time error becomes Stato 99 with its description,
/// " in " and the procedure; a failure from further inside keeps the text it has.
template <class Corpo>
decltype(auto) sottoNome(std::string_view procedura, Corpo&& corpo) {
  const auto fallito = [&](std::string descrizione) {
    return Fallimento(bdgStatoErrore, descrizione.append(" in ").append(procedura));
  };
  try {
    return std::forward<Corpo>(corpo)();
  } catch (const Fallimento&) {
    throw;
  } catch (const std::exception& e) {
    throw fallito(e.what());
  } catch (...) {
    throw fallito("Unknown error");
  }
}

/// The one error trap: every operation of the object is the body of one. A failure gets the name of the innermost
/// operation (blanks and all) and ends each operation around it; the outermost records it as the outcome and returns
/// the fallback. So a nested call needs no test: it comes back only with a result.
/// @param procedura  the name as it stands in error texts, with its trailing blank where the system has one.
template <class Risultato, class Corpo>
Risultato esegui(Contesto& ctx, std::string_view procedura, Risultato ripiego, Corpo&& corpo) {
  const Contesto::Operazione operazione(ctx);
  if (!operazione.esterna()) return sottoNome(procedura, std::forward<Corpo>(corpo));
  try {
    return sottoNome(procedura, std::forward<Corpo>(corpo));
  } catch (const Fallimento& fallimento) {
    ctx.esito(fallimento);
  } catch (...) {
    ctx.esitoSenzaTesto();  // there was no memory to make a Fallimento of it
  }
  return ripiego;
}

template <class Corpo>
requires std::is_void_v<std::invoke_result_t<Corpo>>
void esegui(Contesto& ctx, std::string_view procedura, Corpo&& corpo) {
  esegui(ctx, procedura, 0, [&] {
    std::forward<Corpo>(corpo)();
    return 0;
  });
}

}  // namespace bukorval
