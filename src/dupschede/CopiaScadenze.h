#pragma once

#include "dupschede/PianoDuplicazione.h"
#include "frame/Contesto.h"

namespace bukorval {

/// Gives a card its due dates: the source card's, with their dates moved; the manual ones among them only when
/// IsDuplicaScadenzeManualiCashFlow is set. Where the source has none, they are made from the destination's own budget
/// amounts and cash-flow terms, if its terms ask for them. Due dates that the destination has, automatic or manual,
/// are replaced only when IsSovrascriviEsistenti is set.
/// Outcome: 99 with " in BdgDupSchede_DuplicazioneBU14". Reads BU66_DETBUDGET, BU67_BDGCASHFLOW; writes
/// BU14_SCADCFLOW.
void BdgDupSchede_DuplicazioneBU14(Contesto& ctx, const PianoDuplicazione& piano, const CopiaScheda& copia);

}  // namespace bukorval
