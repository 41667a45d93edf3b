#pragma once

#include <string>

#include "values/Variant.h"

namespace bukorval {

/// The statement of the period grid of a card: one row per period, the details of each kind side by side.
/// @param id              the card (BU65_ID).
/// @param numeroPeriodi   periods per year; Null leaves the number out.
std::string testoGrigliaPeriodi(const values::Variant& id, const values::Variant& numeroPeriodi, int numeroForecast);

}  // namespace bukorval
