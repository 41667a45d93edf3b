#pragma once

#include <string>

#include "frame/Contesto.h"

namespace bukorval {

/// What the grid statement needs besides the properties that select the budget.
struct ParametriGriglia {
  std::string elencoCampi;        ///< the budget's analysis columns, comma-separated
  std::string codiciDescrizioni;  ///< select list of the descriptions, each line begun by a comma
  std::string joinDescrizioni;    ///< and the joins it needs
  bool gestioneSede = false;      ///< cards are kept per site
  int numeroForecast = 0;
};

/// The statement of the budget grid: one row per card with the totals of its budget, actuals and forecasts and its
/// latest orders. The company is the session's.
std::string testoGrigliaBudget(const Contesto& ctx, const ParametriGriglia& parametri);

}  // namespace bukorval
