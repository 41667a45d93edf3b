#pragma once

#include "dupschede/PianoDuplicazione.h"
#include "frame/Contesto.h"

namespace bukorval {

/// Copies amounts and quantities, period by period, from the source card's details of kind TipoDettaglioOrigine to
/// the destination's of kind TipoDettaglioDestinazione. A value that the destination card already has is replaced
/// only when IsSovrascriviEsistenti is set.
/// Outcome: 99 with " in BdgDupSchede_DuplicazioneBU66". Writes BU66_DETBUDGET.
void BdgDupSchede_DuplicazioneBU66(Contesto& ctx, const CopiaScheda& copia);

}  // namespace bukorval
