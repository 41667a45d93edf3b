#pragma once

#include <cstdint>
#include <vector>

#include "ado/connection/Connection.h"
#include "values/Variant.h"

/// Which budgets are defined (BU01_ANABUDGET).
namespace bukorval::dati {

struct CardsOfYear {
  values::Variant year, cards;
};

struct DefinedBudget {
  std::int32_t type = 0;
  values::Variant subtype, description;
  std::vector<CardsOfYear> years;  ///< the fiscal years that hold cards, and how many
};

/// Every budget that is defined, by type and subtype, with the cards of a company. Reads BU65_TESBUDGET too.
std::vector<DefinedBudget> definedBudgets(ado::Connection& connection, const values::Variant& company);

bool isBudgetDefined(ado::Connection& connection, const values::Variant& type, const values::Variant& subtype);

struct BudgetDefinition {
  values::Variant type, subtype, description;
  values::Variant structure;  ///< element codes of three letters
  values::Variant perSite = 0;
  values::Variant periodicity = 0;
  values::Variant calendarYear = 1;  ///< 0: months from the accounting year's first
  values::Variant forecasts = 0;
  values::Variant quantity1 = 0, quantity2 = 0;
};

/// Writes BU01_ANABUDGET.
void defineBudget(ado::Connection& connection, const BudgetDefinition& definition);

}  // namespace bukorval::dati
