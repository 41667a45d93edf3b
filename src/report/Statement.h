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

/// The statement that adds up the details. Its rows: ASSE1 … the codes of the axes, GENERE the kind of the cards, VOCE
/// the kind of the details (Null for cards without any), PERIODO or 0, VALORE the sum, CONSUNTIVO of a forecast the
/// sum of the actuals that it takes, VALORE then that of its own values.
std::string statement(const Reading& reading);

}  // namespace bukorval::report
