#pragma once

#include "ado/Dictionary.h"
#include "ado/recordset/Recordset.h"
#include "frame/Contesto.h"

namespace bukorval {

/// Creates the details of a card that a kind lacks, one for each period of the budget, values Null.
/// Outcome: 99 with " in BU66CreaPeriodiDettagliInesistentiNULL ". Writes BU66_DETBUDGET.
void BU66CreaPeriodiDettagliInesistentiNULL(Contesto& ctx, const values::Variant& id, BdgTipoDettaglio tipo);

/// Writes a card's totals into its details of kind TipoDettaglioDestinazione, percentages applied. Only the periods
/// to elaborate are written; those without movements become 0.
/// Outcome: 99 with " in BdgElaSchede_UpdateBU66 ". Writes BU66_DETBUDGET.
void BdgElaSchede_UpdateBU66(Contesto& ctx, const ado::Dictionary& periodiDaElaborare, ado::Recordset& totali,
                             const values::Variant& id);

}  // namespace bukorval
