#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ado/connection/Connection.h"
#include "frame/BudgetAnno.h"
#include "object/CLSKORVAL.h"
#include "values/Variant.h"

/// Budgets as sheets that people edit elsewhere and bring back.
namespace bukorval::sheet {

/// Which cards of a budget; a site or card kind that is blank stands for all.
struct CardSelection {
  BudgetAnno budget;
  values::Variant site, cardKind;
};

/// A column that tells the budget's cards apart.
struct KeyColumn {
  std::string name;   ///< of BU65_TESBUDGET
  std::string title;  ///< as people know it
  bool described = false;
  bool hidden = false;  ///< from people
};

struct SheetCard {
  std::int64_t id = 0;
  values::Variant stamp;                             ///< the card's last update
  std::vector<values::Variant> codes, descriptions;  ///< by key column; a description may be Null
};

/// The codes of a card that are not hidden, in one text.
std::string keyText(const SheetCard& card, const std::vector<KeyColumn>& keys);

/// Those of the budget that the object selects. Throws dati::Failure when the object does not say.
std::vector<KeyColumn> readKeyColumns(CLSKORVAL& budget, ado::Connection& connection);
/// The cards in the order of their keys. Reads BU65_TESBUDGET and the tables of descriptions.
std::vector<SheetCard> readCards(CLSKORVAL& budget, ado::Connection& connection, const CardSelection& selection,
                                 const std::vector<KeyColumn>& keys);
/// Their details by card, kind and period: BU66_ID_BU65, BU66_TIPO, BU66_PERIODO and the measures.
/// @param kind  nothing for all.
ado::RecordsetPtr readDetails(ado::Connection& connection, const CardSelection& selection,
                              std::optional<BdgTipoDettaglio> kind);

}  // namespace bukorval::sheet
