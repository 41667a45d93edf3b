#pragma once

#include "frame/Contesto.h"

namespace bukorval {

/// The contract of this public member stands in object/CLSKORVAL.h.
void BdgDupSchede_Duplicazione(Contesto& ctx);

}  // namespace bukorval
