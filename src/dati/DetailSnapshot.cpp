#include "dati/DetailSnapshot.h"

#include <set>
#include <string>

#include "frame/ContiPiano.h"
#include "frame/TestoSql.h"
#include "values/Arithmetic.h"
#include "values/Conversion.h"

namespace bukorval::dati {
namespace {

using values::Variant;

std::string snapshotText(const DetailScope& scope) {
  TestoSql sql;
  sql.riga(" SELECT BU65_ID, BU65_CODICE_CG31, BU65_SCHEDA_BU07, ", contoDelPiano(scope.chart).conto, " AS CONTO, ")
      .riga("        BU66_PERIODO, ", scope.measure->column, " AS VALORE ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .riga(" LEFT OUTER JOIN BU66_DETBUDGET WITH (NOLOCK) ")
      .riga("    ON  BU66_ID_BU65 = BU65_ID AND BU66_TIPO = ", numero(scope.kind))
      .testo(condizioniSchede(scope.budget));
  return sql.str();
}

bool same(const Variant& a, const Variant& b) {
  if (a.isNothing() || b.isNothing()) return a.isNothing() == b.isNothing();
  return values::compare(a, b) == 0;
}

}  // namespace

DetailSnapshot::DetailSnapshot(ado::Connection& connection, const DetailScope& scope) {
  const auto rows = connection.Execute(snapshotText(scope));
  const auto& id = (*rows)["BU65_ID"];
  const auto& site = (*rows)["BU65_CODICE_CG31"];
  const auto& code = (*rows)["BU65_SCHEDA_BU07"];
  const auto& account = (*rows)["CONTO"];
  const auto& period = (*rows)["BU66_PERIODO"];
  const auto& amount = (*rows)["VALORE"];
  for (; !rows->Eof(); rows->MoveNext()) {
    const auto card = values::toInt64(id.Value());
    cards_.try_emplace(card, Card{site.Value(), code.Value(), account.Value()});
    if (!period.Value().isNothing()) amounts_[{card, values::toInt32(period.Value())}] = amount.Value();
  }
}

const Variant& DetailSnapshot::amount(const Key& key) const {
  static const Variant kNull = Variant::Null();
  const auto found = amounts_.find(key);
  return found == amounts_.end() ? kNull : found->second;
}

std::vector<AmountChange> amountChanges(const DetailSnapshot& before, const DetailSnapshot& after) {
  std::set<DetailSnapshot::Key> keys;
  for (const auto* snapshot : {&before, &after})
    for (const auto& [key, amount] : snapshot->amounts()) keys.insert(key);
  std::vector<AmountChange> changes;
  for (const auto& key : keys) {
    if (same(before.amount(key), after.amount(key))) continue;
    const auto card = after.cards().find(key.card);
    changes.push_back({key, card == after.cards().end() ? DetailSnapshot::Card{} : card->second, before.amount(key),
                       after.amount(key)});
  }
  return changes;
}

}  // namespace bukorval::dati
