#pragma once

#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "ado/recordset/Recordset.h"
#include "elaschede/PeriodiElaborazione.h"
#include "frame/Contesto.h"
#include "suite/Competenza.h"
#include "values/Date.h"

namespace bukorval {

/// The dates of a movement that say to which months it belongs by competence.
struct DateMovimento {
  const values::Variant &registrazione, &documento, &inizio, &fine;
  const values::Variant& rateo;  ///< CG42_INDRATRIS
};
/// First and last day of a movement's competence, as they stand: the last may be before the first. Nothing for one that
/// has no such interval.
std::optional<std::pair<values::Date, values::Date>> intervalloCompetenza(const DateMovimento& date);
/// What of a movement's amount belongs to each calendar month: its shares over the competence interval, or all of it
/// to the month of its document, else of its registration.
suite::QuoteMensili quotePerCompetenza(const values::Decimal& importo, const DateMovimento& date,
                                       const suite::Arrotondamento& arrotonda = suite::arrotondaImporto);

/// The side of a movement (CG42_INDDAAV) that counts negative: credits of a cost card (0), debits of a revenue card
/// (1); 0 for none.
int segnoNegativo(const values::Variant& tipoScheda);

/// A card's sums by period while its movements are read, one by one.
class TotaliMovimenti {
 public:
  void aggiungi(int periodo, const values::Decimal& importo);
  /// A movement has been read, wherever its amount went.
  void conta() { trovati_ = true; }
  bool trovati() const { return trovati_; }
  /// Adds the sums into the card's totals, a row a period. Periods without a row have nowhere to go: no card holds
  /// them.
  void scrivi(ado::Recordset& totali) const;

 private:
  std::vector<std::optional<values::Decimal>> somme_;
  bool trovati_ = false;
};

/// What adds the movement on which the set stands to the period of its registration's month. A cost card counts credits
/// negative, a revenue card debits.
/// Outcome: 99 with " in BdgElaSchede_GetTotaliMovimentiPerPeriodo".
std::function<void()> BdgElaSchede_GetTotaliMovimentiPerPeriodo(Contesto& ctx, const PeriodiElaborazione& periodi,
                                                                TotaliMovimenti& totali,
                                                                const ado::Recordset& movimento);

/// The same by competence: a movement is spread over the months of its interval in proportion to their days, each
/// share rounded to cents; the month of the end date takes the rest, so the shares add up to the amount exactly.
/// Outcome: 99 with " in BdgElaSchede_GetTotaliMovimentiPerPeriodoDiCompetenza".
std::function<void()> BdgElaSchede_GetTotaliMovimentiPerPeriodoDiCompetenza(Contesto& ctx,
                                                                            const PeriodiElaborazione& periodi,
                                                                            TotaliMovimenti& totali,
                                                                            const ado::Recordset& movimento);

}  // namespace bukorval
