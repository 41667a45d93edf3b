#include "dati/Landing.h"

#include <algorithm>

#include "dati/Failure.h"
#include "elaschede/TotaliMovimenti.h"
#include "frame/TestoSql.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::dati {
namespace {

using values::Decimal;
using values::Variant;

constexpr int kRevenue = 1;
constexpr int kForecastMovement = 2;

Decimal part(const Decimal& amount, const Variant& percentage) {
  return amount * values::toDecimal(percentage) / Decimal::FromScaled(100);
}

std::string keyOf(const Variant& value) { return values::foldText(values::toPlainText(value)); }

}  // namespace

std::string_view textOf(Reason reason) {
  constexpr std::string_view kTexts[] = {"simulated",   "other accounting year",
                                         "other dates", "excluded by code",
                                         "forecast",    "other kind of movement",
                                         "no card",     "no site",
                                         "other site",  "other party",
                                         "no period",   "other period"};
  return kTexts[static_cast<std::size_t>(reason)];
}

Landing::Landing(CLSKORVAL& budget) : budget_(budget) {
  budget.GetGestioneSede(budget.TipoBudget, budget.SottoTipoBudget, perSite_);
  requireSuccess(budget);
}

bool Landing::same(const Variant& a, const Variant& b) { return !values::isBlank(a) && keyOf(a) == keyOf(b); }

Decimal Landing::withSign(const Decimal& amount, const MovementGroup& group, int cardKind) {
  return group.side == segnoNegativo(cardKind) ? -amount : amount;
}

bool Landing::isOfSite(const ElaboratedCard& card, const MovementGroup& group) const {
  return !perSite_ || same(group.site, card.site);
}

bool Landing::isOfParty(const ElaboratedCard& card, const MovementGroup& group) const {
  if (!budget_.IsSoloMovCliFor || values::isBlank(card.party)) return true;
  return same(group.party, card.party) && same(group.partyKind, card.kind == kRevenue ? 0 : 1);
}

Landing::Inside Landing::insideOf(const MovementGroup& group, const WrittenPeriods& periods) const {
  Inside inside;
  for (std::size_t month = 1; month < group.amounts.size(); ++month) {
    if (group.amounts[month].isZero() || periods.ofMonth(month) == 0) continue;
    inside.any = true;
    inside.amount = inside.amount + group.amounts[month];
  }
  // By registration date, the range has all of the line.
  if (budget_.TipoDataMovimenti != 0) return {true, inside.amount};
  if (!inside.any)
    for (const auto& amount : group.amounts) inside.amount = inside.amount + amount;
  return inside;
}

std::optional<Reason> Landing::reasonOf(const MovementGroup& group, const Cards& cards, const Cards& takers,
                                        const Inside& inside) const {
  if (group.excluded) return Reason::ExcludedCode;
  if (!group.admitted) return group.movementKind == kForecastMovement ? Reason::Forecast : Reason::OtherKind;
  if (cards.empty()) return Reason::NoCard;
  if (perSite_ && values::isBlank(group.site)) return Reason::NoSite;
  if (std::ranges::none_of(cards, [&](const auto* card) { return isOfSite(*card, group); })) return Reason::OtherSite;
  if (takers.empty()) return Reason::OtherParty;
  if (!inside.any && !inside.amount.isZero()) return Reason::NoPeriod;
  return std::nullopt;
}

CardPercentages::CardPercentages(const CLSKORVAL& budget, ado::Connection& connection) {
  if (!budget.IsApplicaPercentuali) return;
  TestoSql sql;
  sql.riga(" SELECT BU90_IDBUDGET, BU90_PERCRIP, BU90_PERCSCO ")
      .riga(" FROM   BU90_TABPERCBUD WITH (NOLOCK) ")
      .riga(" WHERE  BU90_DITTA_CG18 = ", numero(budget.CodiceDitta))
      .riga(" AND    BU90_INDTIPO_BU01 = ", numero(budget.TipoBudget))
      .riga(" AND    BU90_SOTTOTIPO_BU01 = ", testoDati(budget.SottoTipoBudget));
  const auto rs = connection.Execute(sql);
  for (; !rs->Eof(); rs->MoveNext())
    ofCard_.try_emplace(values::toInt64((*rs)["BU90_IDBUDGET"].Value()), (*rs)["BU90_PERCRIP"].Value(),
                        (*rs)["BU90_PERCSCO"].Value());
}

Decimal CardPercentages::apply(std::int64_t card, const Decimal& amount) const {
  const auto found = ofCard_.find(card);
  if (found == ofCard_.end()) return amount;
  const auto& [share, deviation] = found->second;
  auto result = amount;
  if (!values::isBlank(share)) result = suite::arrotondaImporto(part(result, share));
  if (!values::isBlank(deviation)) result = suite::arrotondaImporto(result + part(result, deviation));
  return result;
}

}  // namespace bukorval::dati
