#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "ado/connection/Connection.h"
#include "dati/CardAccounts.h"
#include "dati/Landing.h"
#include "dati/Movements.h"
#include "object/CLSKORVAL.h"
#include "values/Decimal.h"

/// The movements behind the cells of a card.
namespace bukorval::dati {

/// A line and what of it is in the cells asked for. Amounts have two decimals and the sign that the card gives them.
struct CellMovement {
  MovementRow row;
  values::Decimal amount;  ///< of the whole line
  values::Decimal share;   ///< in the cells; of a line that is left out what it would have there
  int days = 0;            ///< of its competence in them
  /// Where the rest is: periods of the budget, 0 for months that none has.
  std::vector<std::pair<int, values::Decimal>> rest;
  std::optional<Reason> reason;  ///< that leaves it out
};

/// What an elaboration writes into a cell, and what is there.
struct Cell {
  int period = 0;
  std::int64_t lines = 0;
  values::Decimal movements;    ///< the shares of the lines
  values::Decimal percentages;  ///< what the card's share and deviation add to them
  values::Variant held;         ///< Null where the card has nothing, or there is no card
  values::Decimal total() const { return movements + percentages; }
};

struct DrillDown {
  std::vector<CellMovement> movements, excluded;
  /// Of the periods that the elaboration writes; none when the card has no movements, which leaves it untouched.
  std::vector<Cell> cells;
  std::vector<int> written;  ///< the periods that the dates reach
};

struct DrillScope {
  std::vector<std::pair<values::Date, values::Date>> ranges;  ///< of the runs that make an elaboration
  std::optional<int> period;                                  ///< of one cell; of all that are written without it
  bool excluded = false;                                      ///< also what is left out
};

/// The card as the elaboration takes it; nothing when there is none such. Reads BU65_TESBUDGET, BU67_BDGCASHFLOW.
std::optional<ElaboratedCard> findElaboratedCard(ado::Connection& connection, const values::Variant& card);

/// By the properties that a card elaboration reads; one statement for the movements of each range.
/// @param card  its identifier is 0 for an account without one.
/// Throws Refused for a card on no account or a period that the dates do not reach.
DrillDown drillDown(CLSKORVAL& budget, ado::Connection& connection, const ElaboratedCard& card,
                    const DrillScope& scope);

}  // namespace bukorval::dati
