#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "report/Axes.h"
#include "report/Measures.h"

namespace bukorval::report {

/// What the details are read for.
struct Reading {
  std::vector<CardAxis> axes;  ///< of the rows, and of the columns where they are no periods
  std::string conditions;      ///< from WHERE, that keep the cards
  std::string_view measure;    ///< column of BU66_DETBUDGET
  bool budgetOrActual = false, orders = false;
  std::vector<int> forecasts;
  bool byPeriod = false;
  std::vector<int> periods;  ///< the only ones that count; all when there are none
};

/// The statement that adds up the details. A row with a Null VOCE is a group of cards: its number GRUPPO, the codes
/// ASSE1 … of the axes, GENERE the kind of its cards. Any other is what a group has of a kind of details (VOCE) in a
/// PERIODO, 0 for all: VALORE the sum; of a forecast that of its own values, and CONSUNTIVO that of the actuals it
/// takes. Rows come in any order.
std::string statement(const Reading& reading);

}  // namespace bukorval::report
