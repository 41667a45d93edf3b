#pragma once

#include <string>
#include <vector>

#include "ado/connection/Connection.h"
#include "dati/Cards.h"
#include "frame/BudgetAnno.h"
#include "object/CLSKORVAL.h"
#include "values/Variant.h"

/// Two budgets, years, versions or detail kinds, card by card. Reads BU65_TESBUDGET, BU66_DETBUDGET.
namespace bukorval::dati {

struct ComparedSide {
  BudgetAnno budget;
  BdgTipoDettaglio kind = 0;  ///< not orders: of these a card has the latest one only
};

/// Amounts of the cards that have one key. A side without such cards, or without an amount, is Null. A forecast counts
/// the actual value of a period where there is one, as in the grid.
struct ComparedRow {
  std::vector<values::Variant> key;  ///< by the columns of the comparison
  int period = 0;                    ///< 0 for all of them
  values::Variant left, right;
  bool onLeft = false, onRight = false;  ///< has such a card
};

struct Comparison {
  std::vector<std::string> columns;  ///< that tell the cards apart on both sides
  std::vector<std::string> periods;  ///< their names, from the first; empty for totals
  std::vector<ComparedRow> rows;     ///< by key and period
};

/// Cards match when their key columns are equal; of budgets with different columns, those that both have.
/// @param budget  its selection is changed. @param byPeriod  rows by period, else totals of the year.
/// Throws Refused for budgets without a column in common, for periods that are not the same, and for a detail kind that
/// a budget does not have.
Comparison compare(CLSKORVAL& budget, ado::Connection& connection, const ComparedSide& left, const ComparedSide& right,
                   bool byPeriod);

}  // namespace bukorval::dati
