#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "ado/connection/Connection.h"
#include "frame/DatiBudget.h"
#include "frame/Eventi.h"
#include "frame/Proprieta.h"
#include "suite/Servizi.h"

namespace bukorval {

/// Thrown by Contesto::verifica when a nested operation has already recorded its failure; only the trap catches it.
struct Segnalato {};

/// What every room works on: the client's inputs, the outcome, the connection, the services and the loaded
/// budget definition.
class Contesto {
 public:
  Contesto(Proprieta& proprieta, Eventi& eventi) : prop(proprieta), eventi(eventi) {}
  Contesto(const Contesto&) = delete;
  Contesto& operator=(const Contesto&) = delete;

  Proprieta& prop;
  Eventi& eventi;
  DatiBudget dati;
  /// Accounting year last determined by GetBdgDataInizioBdgDataFine.
  values::Variant dataInizioEsercizio, dataFineEsercizio;
  std::string stringaConnessione;
  std::shared_ptr<suite::ServizioDate> servizioDate;
  std::shared_ptr<suite::ServizioAritmetico> servizioAritmetico;

  BdgStato stato() const { return stato_; }
  const std::string& errore() const { return errore_; }
  /// Resets the outcome; does nothing inside another operation, whose failure must stand.
  void azzeraStato();
  /// Records a refusal (Stato 1) with its fixed message.
  void rifiuta(std::string messaggio);
  /// Records a run-time error (Stato 99): description + " in " + procedure.
  void segnala(std::string_view descrizione, std::string_view procedura);
  /// Records a run-time error (Stato 99) whose text is complete as it stands, and leaves the running operation.
  [[noreturn]] void fallisce(std::string testo);
  /// Leaves the running operation when an operation it called has failed.
  void verifica() const {
    if (stato_ != bdgStatoOk) throw Segnalato{};
  }

  /// The connection in use; throws when none is set.
  ado::Connection& connessione() const;
  const ado::ConnectionPtr& connessionePtr() const { return connessione_; }
  void connessione(ado::ConnectionPtr connessione) { connessione_ = std::move(connessione); }

  /// The session; throws when the client has set none.
  suite::ActiveInterface& sessione() const;
  /// Decimal sign of the session, comma without one.
  char separatore() const;

 private:
  friend class Annidamento;
  BdgStato stato_ = bdgStatoOk;
  std::string errore_;
  int profondita_ = 0;
  ado::ConnectionPtr connessione_;
};

/// Counts how deep operations are nested, so that only the outermost one resets the outcome.
class Annidamento {
 public:
  explicit Annidamento(Contesto& ctx) : ctx_(ctx) { ++ctx_.profondita_; }
  ~Annidamento() { --ctx_.profondita_; }
  Annidamento(const Annidamento&) = delete;
  Annidamento& operator=(const Annidamento&) = delete;

 private:
  Contesto& ctx_;
};

}  // namespace bukorval
