#pragma once

#include "ado/recordset/Recordset.h"
#include "dupschede/PianoDuplicazione.h"
#include "frame/Contesto.h"

namespace bukorval {

/// Creates the destination card of the current source card: every header column, with the destination's subtype,
/// year, progressive and site, and a new update stamp.
/// @return its BU65_ID; Null when the source card is no longer there, and nothing is created.
/// Outcome: 99 with " in BdgDupSchede_DuplicazioneBU65". Writes BU65_TESBUDGET.
values::Variant BdgDupSchede_DuplicazioneBU65(Contesto& ctx, const PianoDuplicazione& piano,
                                              const ado::Recordset& schede);

}  // namespace bukorval
