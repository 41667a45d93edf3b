#pragma once

#include "ado/recordset/Recordset.h"
#include "frame/Contesto.h"

namespace bukorval {

/// True when the account lies in [DaConto, AConto]; an empty bound is open.
bool contoNelIntervallo(const Proprieta& prop, const values::Variant& conto);

/// Carries monthly balances of general-ledger accounts over to the accounts of the budget's reclassification scheme.
/// A negative balance goes through the link of SEGNO 2, any other through that of SEGNO 1; without a link it goes
/// to RstSaldiSenzaCollegamento instead. Failures throw. Reads CG24_TABPDC with CG20_COLLPDCRICL and CG23_RICLBILCEE,
/// or with CG83_COLLRICL and PC03_ANAGPDC.
ado::RecordsetPtr riportaSuContiRiclassificati(Contesto& ctx, ado::Recordset& saldi);

}  // namespace bukorval
