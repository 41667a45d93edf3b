#pragma once

#include <compare>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "ado/connection/Connection.h"
#include "dati/DetailNames.h"
#include "frame/BudgetAnno.h"
#include "frame/Enumerazioni.h"
#include "values/Variant.h"

namespace bukorval::dati {

/// Which details a snapshot takes: a budget's, of one kind.
struct DetailScope {
  BudgetAnno budget;
  BdgTipoDettaglio kind = 0;
  BdgTipoPdc chart = bdgPdcCoGe;  ///< which of a card's accounts is the budget's
  const Measure* measure = kMeasures.data();
};

/// The amounts of a budget's cards at one moment, or one of their quantities. Reads BU65_TESBUDGET, BU66_DETBUDGET.
class DetailSnapshot {
 public:
  struct Card {
    values::Variant site, code, account;
  };
  struct Key {
    std::int64_t card;
    int period;
    auto operator<=>(const Key&) const = default;
  };
  using Amount = std::pair<Key, values::Variant>;

  DetailSnapshot() = default;
  DetailSnapshot(ado::Connection& connection, const DetailScope& scope);

  const std::map<std::int64_t, Card>& cards() const { return cards_; }
  /// Those of the details that there are, card by card and period by period.
  const std::vector<Amount>& amounts() const { return amounts_; }
  /// Null where there is no detail.
  const values::Variant& amount(const Key& key) const;

 private:
  std::map<std::int64_t, Card> cards_;
  std::vector<Amount> amounts_;
};

struct AmountChange {
  DetailSnapshot::Key key;
  DetailSnapshot::Card card;  ///< as it is afterwards
  values::Variant before, after;
};
/// The amounts that differ between two moments, card by card and period by period.
std::vector<AmountChange> amountChanges(const DetailSnapshot& before, const DetailSnapshot& after);

}  // namespace bukorval::dati
