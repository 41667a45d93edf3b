#pragma once

#include "dupschede/PianoDuplicazione.h"
#include "frame/Contesto.h"

namespace bukorval {

/// Gives a card its due dates. The automatic ones are made anew from the card's own budget amounts and cash-flow
/// terms, unless its terms say that due dates are kept by hand. The source's manual ones follow, their dates moved,
/// only when IsDuplicaScadenzeManualiCashFlow is set; a destination that has manual ones keeps them unless
/// IsSovrascriviEsistenti is set.
/// Outcome: 99 with " in BdgDupSchede_DuplicazioneBU14". Reads BU66_DETBUDGET, BU67_BDGCASHFLOW; writes
/// BU14_SCADCFLOW.
void BdgDupSchede_DuplicazioneBU14(Contesto& ctx, const PianoDuplicazione& piano, const CopiaScheda& copia);

}  // namespace bukorval
