#pragma once

#include <string>

#include "ado/recordset/Recordset.h"
#include "dati/import/Problems.h"

namespace bukorval::dati {

/// Percentages by account and by month, as RstScostPerConto and RstScostPerPeriodo take them.
struct Deviations {
  ado::RecordsetPtr byAccount, byPeriod;
};

/// The columns of a file of deviations, in words.
std::string deviationColumns();

/// Reads a CSV file of deviations. A line without a period is the account's own percentage. Throws Refused when the
/// file cannot be opened.
Deviations readDeviations(const std::string& file, Problems& problems);

}  // namespace bukorval::dati
