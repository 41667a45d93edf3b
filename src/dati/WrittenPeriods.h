#pragma once

#include <array>
#include <cstddef>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "object/CLSKORVAL.h"
#include "values/Date.h"

namespace bukorval::dati {

/// The names of the periods that the selected budget has, from the first. Throws Failure.
std::vector<std::string> periodNames(CLSKORVAL& budget);

/// How many periods a budget has, and which of them a calendar month lies in (0 when the calendar lacks the year):
/// equal ones can be put side by side. Their names alone do not tell from which month quarters are counted.
struct PeriodShape {
  std::size_t count = 0;
  std::array<int, 13> ofMonth{};
  bool operator==(const PeriodShape&) const = default;
};
/// Of the selected budget. Throws Failure.
PeriodShape periodShape(CLSKORVAL& budget);

/// The periods that a card elaboration of the selected budget writes for a range of dates, which are those of the
/// whole budget when the range is longer than a year.
class WrittenPeriods {
 public:
  /// Throws Failure when the object does not tell the budget's periods.
  WrittenPeriods(CLSKORVAL& budget, const values::Date& from, const values::Date& to);

  const std::set<int>& all() const { return written_; }
  /// The budget's period of a calendar month, written or not; 0 for none.
  int periodOf(std::size_t month) const { return ofMonth_[month]; }
  /// The period of a calendar month; 0 for a month whose period is not written.
  int ofMonth(std::size_t month) const { return written_.contains(ofMonth_[month]) ? ofMonth_[month] : 0; }

 private:
  std::pair<int, int> ends(const values::Date& from, const values::Date& to) const;
  std::array<int, 13> ofMonth_;
  std::set<int> written_;
};

}  // namespace bukorval::dati
