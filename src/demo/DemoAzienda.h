#pragma once

#include "ado/connection/Connection.h"

namespace demo {

/// Fills an empty database that has its tables (schema::create) with the demo company: a machine maker with three
/// sites, accounting years from July 2022 to 2026, movements of 2024 and of 2025 up to September, and budgets of
/// general expenses, sales and the income statement. The same rows at every run; all of them or, when a statement
/// fails, none. Opens a transaction of its own.
void creaDemo(ado::Connection& connessione);

}  // namespace demo
