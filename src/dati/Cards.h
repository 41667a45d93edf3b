#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ado/Dictionary.h"
#include "ado/connection/Connection.h"
#include "dati/DetailNames.h"
#include "frame/BudgetAnno.h"
#include "object/CLSKORVAL.h"
#include "values/Variant.h"

/// Looking cards up (BU65_TESBUDGET), and writing their values through the object.
namespace bukorval::dati {

/// Sets the object's selection (company, budget, year, site, card kind) to the one a card belongs to.
/// @param card  BU65_ID, a number. @return false when there is no such card; nothing is then set.
bool selectBudgetOfCard(CLSKORVAL& budget, ado::Connection& connection, const values::Variant& card);

/// Sets it to a budget of a year, over all its sites and card kinds.
void selectBudget(CLSKORVAL& budget, const BudgetAnno& selected);

/// The last of a budget's card codes (BU65_SCHEDA_BU07), in the order of the database; Null when it has none.
values::Variant lastCardCode(ado::Connection& connection, const BudgetAnno& budget);
/// How many details (BU66_DETBUDGET) a card has.
std::int32_t countDetails(ado::Connection& connection, const values::Variant& card);

/// The budgets that cards (BU65_ID) belong to, each once; cards that are not there belong to none.
std::vector<BudgetAnno> budgetsOfCards(ado::Connection& connection, const std::vector<std::int64_t>& cards);

struct RowsOfTable {
  std::string_view table;
  std::int32_t rows;
};
/// The tables in which a card has rows of its own, always the same ones in the same order.
std::vector<RowsOfTable> countRowsOfCard(ado::Connection& connection, const values::Variant& card);

/// The sites that have cards in a budget, in order, as keys and items.
ado::DictionaryPtr sitesWithCards(ado::Connection& connection, const BudgetAnno& budget);

/// A column of BU65_TESBUDGET that tells one card of a budget from another.
struct CardColumn {
  std::string name;
  bool number = false;
  int width = 0;  ///< digits or characters
};
/// Those of the budget that the object selects. Throws Failure when the object does not say.
std::vector<CardColumn> cardColumns(CLSKORVAL& budget, ado::Connection& connection);

/// The same without the flags, which do not make another card of it: planned, with cash flow.
std::vector<CardColumn> keyColumns(CLSKORVAL& budget, ado::Connection& connection);

/// Such columns with their values.
using CardKey = std::vector<std::pair<std::string, values::Variant>>;
/// The cards of a budget (BU65_ID) that have these values; a value that is nothing stands for NULL.
std::vector<values::Variant> findCards(ado::Connection& connection, const BudgetAnno& budget, const CardKey& key);

/// The amounts that a card holds, or its quantities, by period; a period without a detail is not there, one with an
/// empty detail is Null.
std::map<int, values::Variant> amountsOfCard(ado::Connection& connection, const values::Variant& card,
                                             BdgTipoDettaglio kind, const Measure& measure = kMeasures[0]);

/// Writes one value of a card with AggiornaSingoloValoreBU66; the detail row is made when it is missing. Throws
/// Failure when the object does not succeed.
/// @param measure  amount (2 decimals), quantity 1 or quantity 2 (3 decimals); a Null value clears it.
void writeCardValue(CLSKORVAL& budget, const values::Variant& card, BdgTipoDettaglio kind, int period,
                    BdgTipoValore measure, const values::Variant& value);

/// The same into one of several details that a card has of a kind in a period.
/// @param detail  BU66_ID; Refused when the card has no such detail of that kind in that period.
void writeDetailValue(CLSKORVAL& budget, ado::Connection& connection, const values::Variant& card,
                      BdgTipoDettaglio kind, int period, const values::Variant& detail, BdgTipoValore measure,
                      const values::Variant& value);

}  // namespace bukorval::dati
