#include "dati/CardWriter.h"

#include <memory>

#include "dati/Failure.h"
#include "language/Language.h"
#include "values/Conversion.h"

namespace bukorval::dati {
namespace {

std::string describe(const CardKey& key) {
  std::string text;
  for (const auto& [column, value] : key)
    text += (text.empty() ? "" : ", ") + column + " = " + values::toPlainText(value);
  return text;
}

}  // namespace

values::Variant CardWriter::find(const CardKey& key) const {
  const auto cards = findCards(connection_, budgetScelto(budget_), key);
  if (cards.size() > 1) throw Refused(tr("Several cards have {}", describe(key)));
  return cards.empty() ? values::Variant() : cards.front();
}

values::Variant CardWriter::findOrCreate(const CardKey& key) {
  const auto name = values::toPlainText(budget_.AnnoEsercizio) + "\n" + describe(key);
  if (const auto known = found_.find(name); known != found_.end()) return known->second;
  auto card = find(key);
  if (card.isEmpty()) {
    auto columns = std::make_shared<ado::Dictionary>();
    for (const auto& [column, value] : key)
      if (!value.isNothing()) columns->Add(column, value);
    if (!selectors_) selectors_.emplace(budget_);
    selectors_->require(*columns);
    budget_.InserimentoNuovaSchedaBudget(columns);
    requireSuccess(budget_);
    ++created_;
    card = find(key);
    if (card.isEmpty()) throw Refused(tr("No card was made for {}", describe(key)));
  }
  return found_.emplace(name, card).first->second;
}

}  // namespace bukorval::dati
