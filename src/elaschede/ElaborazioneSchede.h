#pragma once

#include "frame/Contesto.h"

namespace bukorval {

/// The contract of this public member stands in object/CLSKORVAL.h.
void BdgElaSchede_Elaborazione(Contesto& ctx);

}  // namespace bukorval
