#pragma once

#include "ado/recordset/Recordset.h"
#include "frame/Contesto.h"

namespace bukorval {

/// What the movement query needs of a card.
struct ContoScheda {
  values::Variant conto;   ///< BU65_CONTO_CG24
  values::Variant clifor;  ///< BU67_CLIFOR_CG44
};

/// The movements of a card's account in the selected year, kinds and dates, in order of registration; Nothing for a
/// card without account or without movements.
/// Outcome: 99 with " in BdgElaSchede_GetRstMovimentiConto". Reads CG41_PRIMANOTA, CG42_MOVCONT.
ado::RecordsetPtr BdgElaSchede_GetRstMovimentiConto(Contesto& ctx, const ContoScheda& scheda);

}  // namespace bukorval
