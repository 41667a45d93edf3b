#pragma once

#include <string>

#include "sheet/BudgetSheet.h"

namespace bukorval::sheet {

/// Writes a spreadsheet (.xlsx) in the shape of WideShape.h: a hidden line with the names of the columns, one with
/// their titles, the cards, the totals; only values of periods may be changed. A second sheet draws the totals. Throws
/// dati::Refused when the file cannot be written, or for more cards than a sheet has lines.
void writeXlsx(const BudgetSheet& sheet, const std::string& file);

}  // namespace bukorval::sheet
