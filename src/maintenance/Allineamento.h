#pragma once

#include "frame/Contesto.h"

namespace bukorval {

/// Adds to the selected budget the cards that its structure has and the budget lacks, each with its empty details: one
/// for each element, and for each site where the budget is kept per site. Removes and changes nothing; run again, it
/// adds nothing. One transaction: after a failure the budget is as it was.
///
/// The structure is the property `CodiceStrutturaBU60`, by default the budget definition's. The sites are the keys of
/// `ElencoSedi`, else `CodiceSede`, else all of the company; an element that fixes a site of its own has only that one.
/// For type 4 an element without a card kind takes `BdgTipoScheda`. The company is the session's.
///
/// Raises BeginProcess with the number of cards to look at, StepProcess after each of them, EndProcess.
/// Outcome: 1 when the structure is missing or does not exist, or a property that selects the budget is not set.
/// Reads BU01_ANABUDGET, BU60_STRUTTANAG, BU61_STRUTTELEM, CG31_SEDI, BU65_TESBUDGET; writes BU65_TESBUDGET,
/// BU66_DETBUDGET, for type 4 BU67_BDGCASHFLOW.
void AllineaBU65_A_StrutturaBU60(Contesto& ctx);

}  // namespace bukorval
