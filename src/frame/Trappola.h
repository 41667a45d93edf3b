#pragma once

#include <exception>
#include <string_view>
#include <type_traits>
#include <utility>

#include "frame/Contesto.h"

namespace bukorval {

/// The one error trap. Runs the body of an operation; a run-time error is recorded under the operation's name
/// (blanks and all) and the fallback returned. A failure that an inner operation recorded keeps its name.
/// @param procedura  the name as it stands in error texts, with its trailing blank where the system has one.
template <class Risultato, class Corpo>
Risultato esegui(Contesto& ctx, std::string_view procedura, Risultato ripiego, Corpo&& corpo) {
  Annidamento annidamento(ctx);
  try {
    ctx.azzeraStato();
    return std::forward<Corpo>(corpo)();
  } catch (const Segnalato&) {
  } catch (const std::exception& e) {
    ctx.segnala(e.what(), procedura);
  } catch (...) {
    ctx.segnala("Unknown error", procedura);
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

/// Passes a nested operation's result on, unless it failed: then the running operation ends too.
template <class Risultato>
Risultato chiedi(const Contesto& ctx, Risultato&& risultato) {
  ctx.verifica();
  return std::forward<Risultato>(risultato);
}

}  // namespace bukorval
