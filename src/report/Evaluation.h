#pragma once

#include <map>
#include <string>
#include <vector>

#include "object/CLSKORVAL.h"
#include "report/Cube.h"
#include "report/Measures.h"
#include "report/Report.h"

namespace bukorval::report {

/// What the sums of a cube are in the figures of a report.
class Evaluation {
 public:
  /// @param columns  of the report, the total included.
  Evaluation(CLSKORVAL& budget, const Cube& cube, const std::vector<Figure>& figures, std::size_t columns);

  /// The cells of a row. Throws dati::Failure when the object does not succeed.
  std::vector<Cell> cells(const Node& node) const;

 private:
  Cell cell(const Node& node, std::size_t column, const Figure& figure) const;
  Cell delta(const Sum& sum, const Sum& budget, Formula formula) const;
  Cell available(const Node& node, std::size_t column) const;
  values::Variant turn(const Turn& turn) const;

  CLSKORVAL& budget_;
  const Cube& cube_;
  const std::vector<Figure>& figures_;
  std::size_t columns_;
  std::vector<std::string> periodNames_;  ///< from the first; none where nobody asks
};

}  // namespace bukorval::report
