#pragma once

#include "frame/Contesto.h"

namespace bukorval {

/// The contract of this public member stands in object/CLSKORVAL.h.
void AllineaBU65_A_StrutturaBU60(Contesto& ctx);

}  // namespace bukorval
