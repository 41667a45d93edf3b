#pragma once

#include "frame/Contesto.h"

/// How many levels the cards of a company have. The contracts of these public members stand in object/CLSKORVAL.h.
namespace bukorval {

bool GetIsBdgSchedePersonalizzazioneLivelliEsiste(Contesto& ctx, const values::Variant& ditta,
                                                  const values::Variant& tipoScheda, values::Variant& numeroLivelli);

bool GetIsBdgSchedeConfigurazioneLivelliEsiste(Contesto& ctx, const values::Variant& ditta,
                                               const values::Variant& tipoScheda, const values::Variant& numeroLivelli);

}  // namespace bukorval
