#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "object/CLSKORVAL.h"
#include "report/Report.h"
#include "values/Date.h"

/// The periods of a budget as columns.
namespace bukorval::report {

struct PeriodColumns {
  std::vector<Column> columns;         ///< one alone is the total
  std::vector<std::size_t> ofPeriods;  ///< by period, from 1; position 0 stands for none
};

/// Whether the name is one of periods: month, quarter, half, year or period.
bool isPeriods(const std::string& name);
/// Each column is a number of whole periods. Throws dati::Refused, with the columns that the budget has, where its
/// periods are too long or do not fit.
PeriodColumns periodColumns(CLSKORVAL& budget, const std::string& name);

/// The budget's periods from its first month to that of the date. Throws dati::Refused for a month that is not the
/// budget's, or not the last of a period.
std::vector<int> periodsUpTo(CLSKORVAL& budget, const values::Date& to);

/// What a period of the budget is called.
std::string periodName(CLSKORVAL& budget, int period);

}  // namespace bukorval::report
