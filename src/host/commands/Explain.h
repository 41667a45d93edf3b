#pragma once

#include "host/environment/Environment.h"
#include "host/output/Table.h"
#include "values/Variant.h"

namespace bukorval::host {

/// Puts after each forecast of a grid what it is made of: what comes from actuals, what from the forecast itself, and
/// the period from which there are no actuals. The figures are those of a report.
/// @param table  with its totals.
void explainGrid(Environment& environment, Table& table);
/// The same in the periods of one card: where the forecast's own values begin, the period is named.
void explainPeriods(Environment& environment, Table& table, const values::Variant& card);

}  // namespace bukorval::host
