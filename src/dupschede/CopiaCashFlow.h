#pragma once

#include "dupschede/PianoDuplicazione.h"
#include "frame/Contesto.h"

namespace bukorval {

/// Copies the cash-flow row of a card, its dates moved into the destination year. A destination that has a row keeps
/// it unless IsSovrascriviEsistenti is set or the card is new.
/// Outcome: 99 with " in BdgDupSchede_DuplicazioneBU67". Writes BU67_BDGCASHFLOW.
void BdgDupSchede_DuplicazioneBU67(Contesto& ctx, const PianoDuplicazione& piano, const CopiaScheda& copia);

}  // namespace bukorval
