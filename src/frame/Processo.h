#pragma once

#include <string_view>

#include "frame/Contesto.h"
#include "values/Errore.h"

namespace bukorval {

/// The progress events of one long step: begins when it is made, counts its units of work, ends once, also when a
/// unit fails. A handler that throws, or ends the operation's transaction, ends the running operation; one that calls
/// the object does not disturb it.
class Processo {
 public:
  template <class Passi>
  Processo(Contesto& ctx, std::string_view descrizione, Passi passi) : ctx_(ctx) {
    values::Variant testo(descrizione);
    values::Variant numero(passi);
    avvisa(ctx_.eventi.BeginProcess, testo, numero);
  }
  ~Processo() {
    if (finito_) return;
    try {
      fine();
    } catch (...) {
      // The failure that ended the step is the one to report.
    }
  }
  Processo(const Processo&) = delete;
  Processo& operator=(const Processo&) = delete;

  void passo() {
    values::Variant numero(++fatti_);
    avvisa(ctx_.eventi.StepProcess, numero);
  }
  void fine() {
    finito_ = true;
    avvisa(ctx_.eventi.EndProcess);
  }

 private:
  template <class Gestore, class... Argomenti>
  void avvisa(const Gestore& evento, Argomenti&... argomenti) {
    if (!evento) return;
    const Gestore gestore = evento;  // one that replaces itself is still whole until it returns
    const auto transazione = ctx_.connessione().transaction();
    {
      const Contesto::TurnoDelCliente turno(ctx_);
      gestore(argomenti...);
    }
    // What is written after it would stay, whatever becomes of the operation.
    if (transazione != 0 && ctx_.connessione().transaction() != transazione)
      throw values::Errore("An event handler has ended the transaction of the operation");
  }

  Contesto& ctx_;
  int fatti_ = 0;
  bool finito_ = false;
};

}  // namespace bukorval
