#pragma once

#include <string_view>

#include "ado/recordset/Recordset.h"

namespace bukorval {

/// The fields of the two grids. Both sets are disconnected, client-side and open, with no rows.

/// The budget grid: the card's identifiers, the analysis columns of the budget's field list (comma-separated
/// BU65_ names) with their descriptions, then per measure the totals, deltas and forecasts.
ado::RecordsetPtr creaGrigliaBudget(std::string_view elencoCampi, int numeroForecast);

/// The period grid: the period, the identifiers of its detail rows, then per measure the values, deltas and forecasts.
ado::RecordsetPtr creaGrigliaPeriodi(int numeroForecast);

}  // namespace bukorval
