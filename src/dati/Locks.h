#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ado/connection/Connection.h"
#include "frame/BudgetAnno.h"

/// Budgets of a year that nobody writes into (BK05_BLOCCHI). The program keeps to it, the object does not ask.
namespace bukorval::dati {

struct BudgetLock {
  BudgetAnno budget;
  values::Variant when, user, reason;
};

/// The locks of a company. Not inside a transaction.
std::vector<BudgetLock> budgetLocks(ado::Connection& connection, const values::Variant& company);
/// Throws Refused for a budget that is locked.
void requireUnlocked(ado::Connection& connection, const BudgetAnno& budget);

/// Throws Refused when it is locked already.
void lockBudget(ado::Connection& connection, const BudgetAnno& budget, const std::string& user,
                const std::string& reason);
/// Throws Refused when it is not locked.
void unlockBudget(ado::Connection& connection, const BudgetAnno& budget);

/// "4/01@2025"
std::string nameOf(const BudgetAnno& budget);

}  // namespace bukorval::dati
