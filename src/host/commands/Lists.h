#pragma once

#include "host/environment/Environment.h"

/// Lists that several commands show.
namespace bukorval::host {

/// The budgets that are defined, with their years, cards and locks.
Table budgetsTable(Environment& environment);
/// The accounting years of the company.
Table yearsTable(Environment& environment);

}  // namespace bukorval::host
