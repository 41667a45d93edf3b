#pragma once

#include <utility>
#include <vector>

#include "host/environment/Environment.h"

/// What a run of the card elaboration means when the command line does not say all of it.
namespace bukorval::host {

/// The movements' year, TipoMovimenti by the kinds that are named, and the detail kind written: the budget's own year,
/// the real movements, the actuals. Throws UsageError or dati::Refused for what would only wipe amounts, or write them
/// where no grid shows them.
void completeCardRun(Environment& environment);

struct CardRunDates {
  values::Date from, to;  ///< DaData and AData where they were given, else the budget's first day and `closed`
  values::Variant last;   ///< latest movement between them, Null without one
  values::Date closed;    ///< end of the month that has it
  bool beyond = false;    ///< an AData was given that is later
};
CardRunDates cardRunDates(Environment& environment);
/// Tells them beside what is shown.
void tellDates(const Environment& environment, const CardRunDates& dates);
/// Makes them DaData and AData.
void takeDates(CLSKORVAL& budget, const CardRunDates& dates);

/// The dates, or two ranges where they cross the turn of the year in a budget by calendar months: the object takes
/// the months of such dates as the two ends of a range and would elaborate those between them.
std::vector<std::pair<values::Variant, values::Variant>> cardRunRanges(CLSKORVAL& budget);

}  // namespace bukorval::host
