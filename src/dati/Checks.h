#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ado/connection/Connection.h"
#include "object/CLSKORVAL.h"

/// Whether the data holds together. Nothing is changed.
namespace bukorval::dati {

/// What one look at the data found.
struct CheckResult {
  std::string check;          ///< what must not be
  std::int64_t findings = 0;  ///< how often it is
  std::string example;        ///< one of them; "" for none
};

/// Rows that hang on no card, cards without the rows they need, details that stand twice; of every company. Reads
/// BU65_TESBUDGET and the tables of a card.
std::vector<CheckResult> checkRows(ado::Connection& connection);

/// The budget-years whose grids do not add up to the details of their cards: the sums of budget and actual amounts
/// over all sites and card kinds. Of the object's company; sets the object's selection. Reads BU65_TESBUDGET and
/// BU66_DETBUDGET.
CheckResult checkGrids(CLSKORVAL& budget, ado::Connection& connection);

}  // namespace bukorval::dati
