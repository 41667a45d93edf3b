#include "frame/Contesto.h"

#include "values/Conversion.h"
#include "values/Errore.h"

namespace bukorval {

void Contesto::azzeraStato() {
  if (profondita_ > 1) return;
  stato_ = bdgStatoOk;
  errore_.clear();
}

void Contesto::rifiuta(std::string messaggio) {
  stato_ = bdgStatoRifiutato;
  errore_ = std::move(messaggio);
}

void Contesto::segnala(std::string_view descrizione, std::string_view procedura) {
  stato_ = bdgStatoErrore;
  errore_.assign(descrizione).append(" in ").append(procedura);
}

void Contesto::fallisce(std::string testo) {
  stato_ = bdgStatoErrore;
  errore_ = std::move(testo);
  throw Segnalato{};
}

ado::Connection& Contesto::connessione() const {
  if (!connessione_) throw values::Errore("Object variable or With block variable not set: Connessione");
  return *connessione_;
}

suite::ActiveInterface& Contesto::sessione() const {
  if (!prop.ActiveInterface) throw values::Errore("Object variable or With block variable not set: ActiveInterface");
  return *prop.ActiveInterface;
}

char Contesto::separatore() const {
  return prop.ActiveInterface ? prop.ActiveInterface->SeparatoreDecimale() : values::kDefaultSeparator;
}

}  // namespace bukorval
