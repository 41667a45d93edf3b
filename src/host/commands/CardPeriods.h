#pragma once

#include "host/environment/Environment.h"
#include "host/output/Table.h"
#include "values/Variant.h"

namespace bukorval::host {

/// The values of a card period by period, with the periods' names, the deltas and the totals. The object selects the
/// card's budget.
/// @param card  BU65_ID.
Table periodsTable(Environment& environment, const values::Variant& card);

/// Some cards as the budget's grid shows them, each by itself: what the grid says of the others is not asked for.
/// @param codes  their identifiers and columns of analysis (dati::codesOf, dati::firstCodes).
Table cardRows(Environment& environment, ado::Recordset& codes);

}  // namespace bukorval::host
