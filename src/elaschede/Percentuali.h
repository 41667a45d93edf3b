#pragma once

#include "ado/recordset/Recordset.h"
#include "frame/Contesto.h"

namespace bukorval {

/// The distribution and deviation percentages of a card, or Nothing.
/// Outcome: 99 with " in BdgElaSchede_GetRstPercentuali ". Reads BU90_TABPERCBUD.
ado::RecordsetPtr BdgElaSchede_GetRstPercentuali(Contesto& ctx, const values::Variant& id);

/// Rewrites the totals' amounts: first the card's distribution percentage, then its deviation on the result, each
/// rounded to cents. Only when IsApplicaPercentuali is set. The card's first row serves every period.
/// Outcome: 99 with " in BdgSchede_ApplicaPercentualiRipartizioneEScostamentoDaBU90_TABPERC".
void BdgSchede_ApplicaPercentualiRipartizioneEScostamentoDaBU90_TABPERC(Contesto& ctx, ado::Recordset& totali,
                                                                        const values::Variant& id);

}  // namespace bukorval
