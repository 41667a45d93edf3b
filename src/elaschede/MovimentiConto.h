#pragma once

#include "ado/connection/Connection.h"
#include "frame/Contesto.h"

namespace bukorval {

/// What the movement query needs of a card.
struct ContoScheda {
  values::Variant conto;   ///< BU65_CONTO_CG24
  values::Variant clifor;  ///< BU67_CLIFOR_CG44
};

/// Visits the movements of a card's account in the selected year, kinds and dates; none for a card without account.
/// They are many, and their order tells nothing: they are not held.
/// Outcome: 99 with " in BdgElaSchede_GetRstMovimentiConto". Reads CG41_PRIMANOTA, CG42_MOVCONT.
void BdgElaSchede_GetRstMovimentiConto(Contesto& ctx, const ContoScheda& scheda, const ado::RowVisitor& visita);

}  // namespace bukorval
