#pragma once

#include "ado/Dictionary.h"
#include "ado/connection/Connection.h"
#include "object/CLSKORVAL.h"

namespace bukorval::dati {

/// The columns without which no grid and no elaboration finds a card of the selected budget again.
class CardSelectors {
 public:
  /// Throws Failure when the object does not tell how the budget is kept.
  explicit CardSelectors(CLSKORVAL& budget);
  /// Throws Refused when one of them is missing.
  void require(const ado::Dictionary& columns) const;

 private:
  bool site_ = false, kind_ = false;
};

/// Creates a card of the budget that the object selects, after looking what the object does not ask: the site
/// (CG31_SEDI) and the accounts (CG24_TABPDC, CG23_RICLBILCEE, PC03_ANAGPDC) exist, and no other card of the budget has
/// the same columns. Throws Refused for what is wrong, Failure when the object does not succeed. Opens no transaction.
/// @param columns  names of BU65_TESBUDGET and values.
/// @param companyChart  the company's general-ledger chart, for a budget that names none.
/// @return BU65_ID of the card.
values::Variant createCard(CLSKORVAL& budget, ado::Connection& connection, const ado::DictionaryPtr& columns,
                           const values::Variant& companyChart);

/// What of a card's columns does not exist in the company, "" when all of it does.
/// @param chart  code of the budget's chart, for an account that comes without its own.
std::string unknownReference(ado::Connection& connection, const values::Variant& company, const values::Variant& chart,
                             const ado::Dictionary& columns);

}  // namespace bukorval::dati
