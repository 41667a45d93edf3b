#pragma once

#include "frame/Contesto.h"

namespace bukorval {

/// Recomputes the details of the selected cards from the movements of their accounts, site by site where the budget
/// is per site (the keys of ElencoSedi), inside one transaction. Cards without movements are left as they are; a
/// site without cards is told to the user and passed over. Raises BeginProcess, StepProcess and EndProcess for
/// each site.
/// Outcome: 1 for missing inputs; 99 for any failure, and nothing of the run stays written.
/// Reads BU65_TESBUDGET, BU67_BDGCASHFLOW, BU90_TABPERCBUD, CG41_PRIMANOTA, CG42_MOVCONT; writes BU66_DETBUDGET.
void BdgElaSchede_Elaborazione(Contesto& ctx);

}  // namespace bukorval
