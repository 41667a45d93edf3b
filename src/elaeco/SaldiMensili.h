#pragma once

#include "ado/recordset/Recordset.h"
#include "frame/Contesto.h"

namespace bukorval {

/// Gathers the balances of every month from DaData to AData, deviation applied, into one row per account, year and
/// calendar month; for a budget on reclassified accounts the balances are carried over to those accounts.
/// Outcome: 99 with " in BdgElaEco_PopolaRstSaldiDaSituazioneEP", or the situation component's own text.
void BdgElaEco_PopolaRstSaldiDaSituazioneEP(Contesto& ctx, ado::RecordsetPtr& saldi);

}  // namespace bukorval
