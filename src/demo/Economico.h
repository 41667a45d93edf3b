#pragma once

#include "demo/Giornale.h"

namespace demo {

/// The economic budgets (type 5): by quarter on general-ledger accounts for 2025, by half-year on the statutory
/// scheme, by year on the managers' chart, and by month for the fiscal year that began in July 2022. Amounts are
/// balances: revenue is negative. Runs after the movements are booked.
void creaEconomico(ado::Connection& connessione, const Giornale& giornale);

}  // namespace demo
