#pragma once

#include <optional>
#include <string_view>

#include "dati/DetailNames.h"
#include "sheet/RawTable.h"
#include "values/Decimal.h"
#include "values/Variant.h"

namespace bukorval::sheet {

/// The value of a measure in a cell. A spreadsheet's number is the shortest decimal that stands for it; one that is a
/// hair (1e-9) beside the measure's decimals came from arithmetic and is rounded, any other is not guessed at. Throws
/// values::Errore, which says what is wrong.
values::Variant cellNumber(const RawCell& cell, const RawTable& table, const dati::Measure& measure);

/// A number in plain notation; nothing for a text that is none, or one that is too large.
std::optional<values::Decimal> plainDecimal(std::string_view text);

}  // namespace bukorval::sheet
