#pragma once

#include "dati/DetailNames.h"
#include "sheet/RawTable.h"
#include "values/Variant.h"

namespace bukorval::sheet {

/// The value of a measure in a cell. A spreadsheet's number is the shortest decimal that stands for it; one that is a
/// hair (1e-9) beside the measure's decimals came from arithmetic and is rounded, any other is not guessed at. Throws
/// values::Errore, which says what is wrong.
values::Variant cellNumber(const RawCell& cell, const RawTable& table, const dati::Measure& measure);

}  // namespace bukorval::sheet
