#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "report/Report.h"

namespace bukorval::report {

/// One of the columns of BU66_DETBUDGET that hold values.
struct Measure {
  std::string_view name;
  std::string_view column;
  std::string_view field;  ///< in the names of the grids' fields
  int decimals;
};
/// Throws dati::Refused, with the measures that there are, for any other.
const Measure& findMeasure(std::string_view name);

/// What details add up to, by position: budget, actuals, orders, then two of each forecast: what it takes from
/// actuals, and what from the forecast itself.
enum Fact : std::size_t { kBudget = 0, kActual = 1, kOrders = 2, kForecasts = 3 };
constexpr std::size_t actualOf(int forecast) { return kForecasts + 2 * static_cast<std::size_t>(forecast - 1); }
constexpr std::size_t ownOf(int forecast) { return actualOf(forecast) + 1; }
constexpr std::size_t factCount(int forecasts) { return kForecasts + 2 * static_cast<std::size_t>(forecasts); }

enum class Formula {
  Sum,
  Delta,         ///< the sum against the budget
  DeltaPercent,  ///< as a ratio
  Available,     ///< budget - actuals - orders
  Turn           ///< the period from which a forecast takes no actuals
};

/// A value that can be asked for.
struct Figure : Value {
  Formula formula = Formula::Sum;
  std::vector<std::size_t> facts;  ///< that are added up
  int forecast = 0;                ///< which one it is of; 0 for none
};
/// @param forecasts  of the budget. Throws dati::Refused, with the values that there are, for any other.
Figure findFigure(std::string_view name, const Measure& measure, int forecasts);

}  // namespace bukorval::report
