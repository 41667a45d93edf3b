#pragma once

#include "frame/Contesto.h"

namespace bukorval {

/// Copies a range of cards into another subtype, fiscal year or site inside one transaction. A missing destination
/// card is created; the details of an existing one are filled. A card that would be copied onto itself with the
/// same detail kind stays as it is. Raises BeginProcess, StepProcess and EndProcess.
/// Outcome: 1 for missing inputs, a missing site, or budgets of different periodicities; 99 for any failure. In
/// both cases nothing of the run stays written.
/// Reads and writes BU65_TESBUDGET, BU66_DETBUDGET, BU67_BDGCASHFLOW, BU14_SCADCFLOW.
void BdgDupSchede_Duplicazione(Contesto& ctx);

}  // namespace bukorval
