#pragma once

#include "ado/recordset/Recordset.h"
#include "dupschede/PianoDuplicazione.h"
#include "frame/Contesto.h"

namespace bukorval {

/// The source cards in card order, or Nothing.
/// Outcome: 99 with " in BdgDupSchede_GetRstBdgSchedeDaDuplicare". Reads BU65_TESBUDGET.
ado::RecordsetPtr BdgDupSchede_GetRstBdgSchedeDaDuplicare(Contesto& ctx, const PianoDuplicazione& piano);

/// The text that looks for the card with the given code in the destination budget.
std::string testoSchedaDestinazione(const Contesto& ctx, const PianoDuplicazione& piano, const values::Variant& scheda);

}  // namespace bukorval
