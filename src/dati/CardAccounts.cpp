#include "dati/CardAccounts.h"

#include <algorithm>
#include <iterator>

#include "elaschede/ContiAnalitici.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::dati {

CardAccounts::CardAccounts(const std::vector<ElaboratedCard>& cards, const suite::ActiveInterface& session) {
  for (const auto& card : cards) {
    const auto [code, exact] = contiDellaScheda(session, card.account);
    if (!code.empty()) (exact ? byAccount_ : byBeginning_)[values::foldText(code)].push_back(&card);
  }
}

const std::vector<const ElaboratedCard*>& CardAccounts::cardsOf(const values::Variant& account) const {
  const auto code = values::foldText(values::toPlainText(account));
  const auto [place, isNew] = found_.try_emplace(code);
  auto& cards = place->second;
  if (!isNew) return cards;
  const auto take = [&](const std::map<std::string, Cards>& map, const std::string& key) {
    if (const auto found = map.find(key); found != map.end())
      std::ranges::copy(found->second, std::back_inserter(cards));
  };
  take(byAccount_, code);
  for (std::size_t length = 1; length <= code.size(); ++length) take(byBeginning_, code.substr(0, length));
  return cards;
}

}  // namespace bukorval::dati
