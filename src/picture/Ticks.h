#pragma once

#include <string>
#include <vector>

#include "picture/Picture.h"

namespace bukorval::picture {

/// An axis that has room for some numbers, with round numbers on it. Positions are approximate; labels are not.
class Axis {
 public:
  /// @param room  for how many steps there is.
  Axis(double least, double greatest, int room);

  double begin() const { return begin_; }
  double end() const { return end_; }
  /// Where a number stands: 0 at the beginning, 1 at the end.
  double position(double number) const { return (number - begin_) / (end_ - begin_); }
  std::vector<double> ticks() const;
  std::string label(double tick, const Words& words) const;

 private:
  double begin_, end_, step_;
};

/// For bars and lines: zero and every point of a trend.
Axis axisOf(const Trend& trend, int room);

}  // namespace bukorval::picture
