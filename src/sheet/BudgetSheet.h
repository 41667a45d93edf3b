#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dati/DetailNames.h"
#include "sheet/SheetCards.h"

namespace bukorval::sheet {

/// What stands in one sheet: one measure of one kind of detail of a budget's cards.
struct SheetSelection {
  CardSelection cards;
  BdgTipoDettaglio kind = bdgDettaglioBudget;
  const dati::Measure* measure = dati::kMeasures.data();

  /// A text without blanks that names the format, the budget, the kind and the measure; it travels with every card.
  std::string identity() const;
};
/// Nothing for a text that is no identity, or one of another format. It selects every site and card kind.
std::optional<SheetSelection> parseIdentity(std::string_view text);

struct SheetCell {
  values::Variant value = values::Variant::Null();  ///< the sum, where a period has several details
  int details = 0;
};

struct SheetRow {
  SheetCard card;
  std::vector<SheetCell> cells;  ///< by period, from 0
};

/// A row a card, a column a period.
struct BudgetSheet {
  SheetSelection selection;
  std::vector<KeyColumn> keys;
  std::vector<std::string> periods;  ///< their names
  std::vector<SheetRow> rows;
};

/// Reads BU65_TESBUDGET, BU66_DETBUDGET and descriptions; the object must select the same budget. Details of periods
/// that the budget does not have are left out.
BudgetSheet readBudgetSheet(CLSKORVAL& budget, ado::Connection& connection, const SheetSelection& selection);

}  // namespace bukorval::sheet
