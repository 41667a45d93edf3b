#pragma once

#include <optional>
#include <string>
#include <unordered_map>

#include "ado/connection/Connection.h"
#include "dati/Cards.h"
#include "dati/NewCard.h"

namespace bukorval::dati {

/// Fills cards of the budget that the object selects, for an import: they are found by their columns, made when
/// missing, written value by value, all through the object. Each card is looked for once. Failures are thrown.
class CardWriter {
 public:
  CardWriter(CLSKORVAL& budget, ado::Connection& connection) : budget_(budget), connection_(connection) {}

  /// BU65_ID. Refused when several cards have these values, and when a new one lacks what finds it again.
  values::Variant findOrCreate(const CardKey& key);
  void write(const values::Variant& card, BdgTipoDettaglio kind, int period, BdgTipoValore measure,
             const values::Variant& value) {
    writeCardValue(budget_, card, kind, period, measure, value);
  }
  /// How many cards were made.
  int created() const { return created_; }

 private:
  /// Empty when there is none.
  values::Variant find(const CardKey& key) const;

  CLSKORVAL& budget_;
  ado::Connection& connection_;
  std::unordered_map<std::string, values::Variant> found_;
  std::optional<CardSelectors> selectors_;  ///< of the budget, once a card is made
  int created_ = 0;
};

}  // namespace bukorval::dati
