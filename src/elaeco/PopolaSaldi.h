#pragma once

#include "frame/Contesto.h"

namespace bukorval {

/// The contract of this public member stands in object/CLSKORVAL.h.
/// @return True for success.
bool BdgElaEco_PopolaRstSaldiElaEco(Contesto& ctx);

}  // namespace bukorval
