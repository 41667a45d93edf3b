#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "report/Axes.h"
#include "report/Columns.h"
#include "report/Measures.h"
#include "report/Report.h"
#include "report/Statement.h"

namespace bukorval::report {

/// What a query asks of the budget that an object selects.
struct Plan {
  /// Throws dati::Refused for what the budget does not have, dati::Failure when the object does not succeed.
  Plan(CLSKORVAL& budget, const Query& query);

  Axes axes;
  std::vector<CardAxis> rows;
  std::optional<CardAxis> columns;  ///< where they are no periods
  PeriodColumns periods;            ///< where they are
  int forecasts = 0;                ///< of the budget
  std::vector<Figure> figures;
  std::size_t sortBy = 0;  ///< position of a figure; past the last for none
  Reading reading;

 private:
  void askAxes(CLSKORVAL& budget, const Query& query);
  void askFigures(const Query& query);
  void askOrder(const Query& query);
};

}  // namespace bukorval::report
