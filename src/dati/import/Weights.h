#pragma once

#include <string>

#include "dati/Spread.h"
#include "dati/import/Problems.h"

namespace bukorval::dati {

/// The columns of a file of weights, in words.
std::string weightColumns();

/// Reads a CSV file of weights; a period that is not in it weighs 0. Throws Refused when it cannot be opened.
/// @param periods  how many there are.
PeriodWeights readWeights(const std::string& file, std::size_t periods, Problems& problems);

}  // namespace bukorval::dati
