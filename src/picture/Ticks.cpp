#include "picture/Ticks.h"

#include <algorithm>
#include <cmath>

namespace bukorval::picture {
namespace {

/// The least of 1, 2, 2.5, 5 and 10 times a power of ten that is no smaller.
double roundStep(double step) {
  const double power = std::pow(10, std::floor(std::log10(step)));
  for (const double factor : {1.0, 2.0, 2.5, 5.0})
    if (step <= factor * power * (1 + 1e-9)) return factor * power;
  return 10 * power;
}

}  // namespace

Axis::Axis(double least, double greatest, int room) {
  if (greatest <= least) greatest = least + 1;
  step_ = roundStep((greatest - least) / room);
  begin_ = std::floor(least / step_ + 1e-9) * step_;
  end_ = std::ceil(greatest / step_ - 1e-9) * step_;
}

std::vector<double> Axis::ticks() const {
  std::vector<double> all;
  const auto count = std::llround((end_ - begin_) / step_);
  for (long long i = 0; i <= count; ++i) all.push_back(begin_ + static_cast<double>(i) * step_);
  return all;
}

std::string Axis::label(double tick, const Words& words) const {
  const int decimals =
      step_ >= 1 ? (std::fmod(step_, 1) == 0 ? 0 : 1) : static_cast<int>(-std::floor(std::log10(step_))) + 1;
  // Near zero a double has digits that nobody wrote.
  return words.number(values::Decimal::FromDouble(std::abs(tick) < step_ / 2 ? 0 : tick), std::min(decimals, 6));
}

Axis axisOf(const Trend& trend, int room) {
  double least = 0, greatest = 0;
  for (const auto& series : trend.series)
    for (const auto& point : series.points) {
      if (!point) continue;
      least = std::min(least, point->toDouble());
      greatest = std::max(greatest, point->toDouble());
    }
  return {least, greatest, room};
}

}  // namespace bukorval::picture
