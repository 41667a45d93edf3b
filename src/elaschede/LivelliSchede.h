#pragma once

#include "frame/Contesto.h"

namespace bukorval {

/// Whether the company has levels of its own for a card kind; `numeroLivelli` then receives how many, when
/// that is stored. Outcome: 99 with " in GetIsBdgSchedePersonalizzazioneLivelliEsiste ". Reads
/// BU05_PERSCHCOSGEN.
bool GetIsBdgSchedePersonalizzazioneLivelliEsiste(Contesto& ctx, const values::Variant& ditta,
                                                  const values::Variant& tipoScheda, values::Variant& numeroLivelli);

/// Whether exactly `numeroLivelli` levels of the card kind are configured: all of them.
/// Outcome: 99 with " in GetIsBdgSchedeConfigurazioneLivelliEsiste ". Reads BU06_CONFIGLIVCOSGEN.
bool GetIsBdgSchedeConfigurazioneLivelliEsiste(Contesto& ctx, const values::Variant& ditta,
                                               const values::Variant& tipoScheda, const values::Variant& numeroLivelli);

}  // namespace bukorval
