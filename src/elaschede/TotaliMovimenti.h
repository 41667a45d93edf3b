#pragma once

#include "ado/recordset/Recordset.h"
#include "elaschede/PeriodiElaborazione.h"
#include "frame/Contesto.h"

namespace bukorval {

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
