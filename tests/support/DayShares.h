#pragma once

#include "support/Test.h"

namespace testing_support {

/// What an amount in cents gives each calendar month of an interval, by counting every day, in integers only: halves
/// away from zero, and the last day's month takes what is left. Index 1 is January.
inline std::array<std::int64_t, 13> countedShares(std::int64_t cents, values::Date from, values::Date to) {
  std::array<std::int64_t, 13> days{}, shares{};
  std::int64_t total = 0;
  for (values::Date d = from; d <= to; d = d.addDays(1), ++total) ++days[static_cast<std::size_t>(d.month())];
  std::int64_t left = cents;
  for (std::size_t month = 1; month <= 12 && total > 0; ++month) {
    const std::int64_t twice = 2 * cents * days[month];
    const std::int64_t sign = twice < 0 ? -1 : 1;
    shares[month] = sign * ((sign * twice + total) / (2 * total));
    left -= shares[month];
  }
  shares[static_cast<std::size_t>(to.month())] += left;
  return shares;
}

}  // namespace testing_support
