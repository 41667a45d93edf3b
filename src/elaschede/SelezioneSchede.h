#pragma once

#include "frame/Contesto.h"

namespace bukorval {

/// Selects the cards to elaborate into RstBdgSchedeDaElaborare (Nothing when there are none), by company, budget,
/// card kind and card range, and by CodiceSede when the budget is per site. Empty bounds become " " and "Z".
/// Outcome: 99 with " in BdgElaSchede_GetRstBdgSchedeDaElaborare". Reads BU65_TESBUDGET, BU67_BDGCASHFLOW.
void BdgElaSchede_GetRstBdgSchedeDaElaborare(Contesto& ctx);

}  // namespace bukorval
