#pragma once

#include "frame/Contesto.h"

namespace bukorval {

/// The contract of this public member stands in object/CLSKORVAL.h.
void BdgElaEco_ScriviBudget_DaRstSaldiElaEco(Contesto& ctx);

}  // namespace bukorval
