#pragma once

#include <array>
#include <string_view>

#include "host/output/Table.h"
#include "object/CLSKORVAL.h"

namespace bukorval::host {

/// How the columns of a grid that hold amounts and quantities begin.
inline constexpr std::array<std::string_view, 3> kMeasurePrefixes{"IMP_", "QTA1_", "QTA2_"};

/// Fills the delta columns of a grid, rows and totals, with the object's own CalcolaDelta and
/// CalcolaDeltaPercentuale: actuals and each forecast against the budget.
void fillDeltas(CLSKORVAL& budget, Table& table);
/// Marks the amounts and quantities of a grid for the totals row.
void markTotals(Table& table);

/// A description begins with its code, so the aligned table needs only one of the two columns; a code that nothing
/// describes stands in for its description.
void mergeDescriptions(Table& table);

}  // namespace bukorval::host
