#pragma once

#include <optional>
#include <ostream>

#include "sheet/BudgetSheet.h"
#include "sheet/CsvWriter.h"

namespace bukorval::sheet {

/// A line a card, a column a period, in the shape of WideShape.h.
void writeWide(std::ostream& out, const BudgetSheet& sheet, const CsvStyle& style);

/// What a tidy file holds; nothing stands for every kind and every measure.
struct TidySelection {
  CardSelection cards;
  std::optional<BdgTipoDettaglio> kind;
  const dati::Measure* measure = nullptr;
};
/// A line a value, with the budget, the card and all its keys, for programs that pivot. Reads the details as they are:
/// several of one period are several lines.
void writeTidy(std::ostream& out, CLSKORVAL& budget, ado::Connection& connection, const TidySelection& selection,
               const CsvStyle& style);

}  // namespace bukorval::sheet
