#pragma once

#include "demo/Giornale.h"

namespace demo {

/// The cards of the general expenses (type 4), per site, for 2024 and 2025: budget, actuals as booked, orders,
/// two forecasts, cash flow with due dates, percentages. Runs after the movements are booked.
void creaSpeseGenerali(ado::Connection& connessione, const Giornale& giornale);

}  // namespace demo
