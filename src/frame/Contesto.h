#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "ado/connection/Connection.h"
#include "frame/DatiBudget.h"
#include "frame/Eventi.h"
#include "frame/Fallimento.h"
#include "frame/Proprieta.h"
#include "suite/Servizi.h"

namespace bukorval {

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

  /// Outcome of the last public operation; the trap alone changes it.
  BdgStato stato() const { return stato_; }
  const std::string& errore() const { return errore_; }
  void esito(const Fallimento& fallimento) noexcept;
  /// Stato 99 without a text.
  void esitoSenzaTesto() noexcept;

  /// The connection in use; throws when none is set.
  ado::Connection& connessione() const;
  const ado::ConnectionPtr& connessionePtr() const { return connessione_; }
  void connessione(ado::ConnectionPtr connessione) { connessione_ = std::move(connessione); }

  /// Called by another operation, not by the client.
  bool annidata() const { return profondita_ > 1; }
  /// The rows of a query that the running operation may need again: it is run once. Code of the client may change what
  /// they come from, so that nothing read before its turn is known after it.
  const ado::RecordsetPtr& righeLette(const std::string& testo);

  /// The session; throws when the client has set none.
  suite::ActiveInterface& sessione() const;
  /// Decimal sign of the session, comma without one.
  char separatore() const;

  /// One operation under way. The outermost starts with a clean outcome.
  class Operazione {
   public:
    explicit Operazione(Contesto& ctx);
    ~Operazione();
    Operazione(const Operazione&) = delete;
    Operazione& operator=(const Operazione&) = delete;
    bool esterna() const { return ctx_.profondita_ == 1; }

   private:
    Contesto& ctx_;
  };

  /// Code of the client runs (an event handler): what it asks of the object are operations of its own, and what they
  /// leave behind is put back, so that the running operation goes on as if nothing had happened.
  class TurnoDelCliente {
   public:
    explicit TurnoDelCliente(Contesto& ctx);
    ~TurnoDelCliente();
    TurnoDelCliente(const TurnoDelCliente&) = delete;
    TurnoDelCliente& operator=(const TurnoDelCliente&) = delete;

   private:
    Contesto& ctx_;
    int profondita_;
    DatiBudget dati_;
    values::Variant dataInizioEsercizio_, dataFineEsercizio_;
    ado::ConnectionPtr connessione_;
  };

 private:
  BdgStato stato_ = bdgStatoOk;
  std::string errore_;
  int profondita_ = 0;
  ado::ConnectionPtr connessione_;
  std::map<std::string, ado::RecordsetPtr, std::less<>> lette_;  ///< by their statements
  ado::ConnectionPtr prossima_;  ///< set by an event handler, for when the running operation has ended
};

}  // namespace bukorval
