#pragma once

#include <optional>
#include <utility>

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

/// Adds the movements into the card's totals by the month of their registration date. A cost card counts credits
/// negative, a revenue card debits.
/// Outcome: 99 with " in BdgElaSchede_GetTotaliMovimentiPerPeriodo".
void BdgElaSchede_GetTotaliMovimentiPerPeriodo(Contesto& ctx, const PeriodiElaborazione& periodi,
                                               ado::Recordset& totali, ado::Recordset& movimenti);

/// The same by competence: a movement is spread over the months of its interval in proportion to their days, each
/// share rounded to cents; the month of the end date takes the rest, so the shares add up to the amount exactly.
/// Outcome: 99 with " in BdgElaSchede_GetTotaliMovimentiPerPeriodoDiCompetenza".
void BdgElaSchede_GetTotaliMovimentiPerPeriodoDiCompetenza(Contesto& ctx, const PeriodiElaborazione& periodi,
                                                           ado::Recordset& totali, ado::Recordset& movimenti);

}  // namespace bukorval
