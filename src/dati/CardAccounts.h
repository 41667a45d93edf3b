#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "suite/ActiveInterface.h"
#include "values/Variant.h"

namespace bukorval::dati {

/// A card as the card elaboration takes it.
struct ElaboratedCard {
  std::int64_t id = 0;
  int kind = 0;  ///< 0 cost, 1 revenue
  values::Variant account, site;
  values::Variant party;  ///< its customer or supplier
};

/// Which cards an account's movements go to, by maps: nothing is looked up in the database.
class CardAccounts {
 public:
  /// @param session  knows how account codes are built.
  CardAccounts(const std::vector<ElaboratedCard>& cards, const suite::ActiveInterface& session);

  /// Those on the account itself or on one above it, whatever their site.
  const std::vector<const ElaboratedCard*>& cardsOf(const values::Variant& account) const;

 private:
  using Cards = std::vector<const ElaboratedCard*>;
  std::map<std::string, Cards> byAccount_, byBeginning_;
  mutable std::map<std::string, Cards> found_;
};

}  // namespace bukorval::dati
