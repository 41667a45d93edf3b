#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "ado/connection/Connection.h"
#include "dati/CardAccounts.h"
#include "dati/Movements.h"
#include "dati/WrittenPeriods.h"
#include "object/CLSKORVAL.h"
#include "values/Decimal.h"

/// The rules by which a card elaboration brings movements to cards.
namespace bukorval::dati {

/// Why a movement landed on no card, or not in a cell; the first that holds.
enum class Reason {
  Simulated,
  OtherYear,
  OtherDates,
  ExcludedCode,
  Forecast,
  OtherKind,
  NoCard,
  NoSite,
  OtherSite,
  OtherParty,
  NoPeriod,
  OtherPeriod
};
std::string_view textOf(Reason reason);

class Landing {
 public:
  using Cards = std::vector<const ElaboratedCard*>;
  /// Of a group, what falls in the periods written.
  struct Inside {
    bool any = false;        ///< a month of it does
    values::Decimal amount;  ///< unsigned
  };

  /// Throws Failure when the object does not tell whether the selected budget is kept by site.
  explicit Landing(CLSKORVAL& budget);

  bool perSite() const { return perSite_; }
  /// Whether the site and the customer or supplier are those of the card.
  bool takes(const ElaboratedCard& card, const MovementGroup& group) const {
    return isOfSite(card, group) && isOfParty(card, group);
  }
  Inside insideOf(const MovementGroup& group, const WrittenPeriods& periods) const;
  /// @param cards  those of the account; @param takers  of them, those that take the group.
  std::optional<Reason> reasonOf(const MovementGroup& group, const Cards& cards, const Cards& takers,
                                 const Inside& inside) const;

  static bool same(const values::Variant& a, const values::Variant& b);
  static values::Decimal withSign(const values::Decimal& amount, const MovementGroup& group, int cardKind);

 private:
  bool isOfSite(const ElaboratedCard& card, const MovementGroup& group) const;
  bool isOfParty(const ElaboratedCard& card, const MovementGroup& group) const;

  const CLSKORVAL& budget_;
  bool perSite_ = false;
};

/// Shares and deviations of the cards, and what they make of an amount: nothing without IsApplicaPercentuali. Reads
/// BU90_TABPERCBUD.
class CardPercentages {
 public:
  CardPercentages(const CLSKORVAL& budget, ado::Connection& connection);
  /// @param amount  of a period. Rounded to the cent after each of the two.
  values::Decimal apply(std::int64_t card, const values::Decimal& amount) const;

 private:
  std::map<std::int64_t, std::pair<values::Variant, values::Variant>> ofCard_;
};

}  // namespace bukorval::dati
