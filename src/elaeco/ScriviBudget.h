#pragma once

#include "frame/Contesto.h"

namespace bukorval {

/// Writes RstSaldiElaEco into the budget, in one transaction: every row with SOVRASCRIVI 1, whatever filter the
/// client has left on the set, goes to the card of its account (and site) as the amount of kind
/// TipoDettaglioDestinazione and period PERIODO. Rows with 0 are left alone. A missing card is created when the
/// budget's structure allows the account; otherwise the account goes to RstContiNonPresentiInStruttura. With
/// ElaboraSoloContiBudgettizzati no card is created. Running it twice writes the same values again. Raises
/// BeginProcess, StepProcess and EndProcess.
/// Outcome: 1 for missing inputs, the site of a budget kept by site among them; 99 for any failure, and nothing of the
/// run stays written.
/// Reads BU01_ANABUDGET and the structures; writes BU65_TESBUDGET, BU66_DETBUDGET.
void BdgElaEco_ScriviBudget_DaRstSaldiElaEco(Contesto& ctx);

}  // namespace bukorval
