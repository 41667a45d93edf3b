#pragma once

#include <compare>
#include <cstdint>
#include <map>
#include <string>

#include "ado/connection/Connection.h"
#include "frame/BudgetAnno.h"
#include "frame/Enumerazioni.h"
#include "host/output/Table.h"
#include "values/Variant.h"

namespace bukorval::host {

/// Which details a snapshot takes: a budget's, of one kind.
struct RitaglioDettagli {
  BudgetAnno budget;
  BdgTipoDettaglio dettaglio = 0;
  BdgTipoPdc tipoPdc = bdgPdcCoGe;  ///< which of a card's accounts is the budget's
};

/// The values of a budget's cards at one moment.
class FotoDettagli {
 public:
  struct Scheda {
    values::Variant sede, codice, conto;
  };
  struct Chiave {
    std::int64_t scheda;
    int periodo;
    auto operator<=>(const Chiave&) const = default;
  };

  FotoDettagli() = default;
  FotoDettagli(ado::Connection& connessione, const RitaglioDettagli& ritaglio);

  const std::map<std::int64_t, Scheda>& schede() const { return schede_; }
  const std::map<Chiave, values::Variant>& importi() const { return importi_; }

 private:
  std::map<std::int64_t, Scheda> schede_;
  std::map<Chiave, values::Variant> importi_;
};

/// The amounts that differ between two moments, card by card and period by period.
Tabella differenze(const FotoDettagli& prima, const FotoDettagli& dopo);

/// How many cards a run took and how many of them it changed, site by site.
class RiepilogoSedi {
 public:
  void selezionata(const values::Variant& sede) { ++perSede_[testo(sede)].selezionate; }
  /// Counts the cards whose amounts differ, new ones among them.
  void cambiate(const FotoDettagli& prima, const FotoDettagli& dopo);
  Tabella tabella() const;

 private:
  struct Conto {
    int selezionate = 0, cambiate = 0;
  };
  static std::string testo(const values::Variant& sede);
  std::map<std::string, Conto> perSede_;
};

}  // namespace bukorval::host
