#include "frame/Traccia.h"

#include <mutex>
#include <utility>

#include "frame/Piattaforma.h"

namespace bukorval {

namespace {

/// Instances of several threads share the channel.
std::mutex guardia;
CanaleTraccia canaleInUso;

/// The fields are plain ASCII, so the line is right in any ANSI code page.
void traccia(Identita& identita, const char* momento) noexcept {
  try {
    const std::string riga = "ZUMA:|" + identita.GetIdIstanza() + "|" + momento + "|BUKORVAL|CLSKORVAL";
    CanaleTraccia canale;
    {
      const std::lock_guard blocco(guardia);
      canale = canaleInUso;
    }
    canale ? canale(riga) : piattaforma::canaleDebug(riga);
  } catch (...) {
  }
}

}  // namespace

void impostaCanaleTraccia(CanaleTraccia canale) {
  const std::lock_guard blocco(guardia);
  canaleInUso = std::move(canale);
}

void tracciaCreazione(Identita& identita) noexcept { traccia(identita, "INI"); }

void tracciaRilascio(Identita& identita) noexcept { traccia(identita, "TER"); }

}  // namespace bukorval
