#pragma once

#include "frame/Contesto.h"

namespace bukorval {

/// Proposes a budget from accounting balances: fills RstSaldiElaEco with one row per account and period of the
/// budget, and marks the rows whose card already holds an amount (BUDGETPRESENTE 1, SOVRASCRIVI 0). A budget with
/// periodicity 0 has no period conditions and yields no rows. Raises BeginProcess, StepProcess, EndProcess for the
/// months read and again for the accounts.
/// @return True for success. Outcome: 1 for missing inputs, 99 for any failure.
/// Reads BU65_TESBUDGET, BU66_DETBUDGET, the chart of accounts and what the situation component reads.
bool BdgElaEco_PopolaRstSaldiElaEco(Contesto& ctx);

}  // namespace bukorval
