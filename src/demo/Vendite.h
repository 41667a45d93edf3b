#pragma once

#include "demo/Giornale.h"

namespace demo {

/// The sales budget of 2025 (type 0) by area, customer and variant, with pieces as quantity 1; the invoices behind
/// its actuals are booked, those of 2024 too.
void creaVendite(ado::Connection& connessione, Giornale& giornale, Caso& caso);
/// The plan of the sales of a year on the accounts that begin with a prefix, as balances: negative.
Mesi pianoVendite(std::string_view prefisso);

}  // namespace demo
