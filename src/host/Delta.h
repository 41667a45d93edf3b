#pragma once

#include "host/Tabella.h"
#include "object/CLSKORVAL.h"

namespace bukorval::host {

/// Fills the delta columns of a grid, rows and totals, with the object's own CalcolaDelta and
/// CalcolaDeltaPercentuale: actuals and each forecast against the budget.
void riempiDelta(CLSKORVAL& oggetto, Tabella& tabella);
/// Marks the amounts and quantities of a grid for the totals row.
void segnaTotali(Tabella& tabella);

}  // namespace bukorval::host
