#include "dati/DetailSnapshot.h"

#include <algorithm>
#include <compare>
#include <string>

#include "frame/ContiPiano.h"
#include "frame/TestoSql.h"
#include "values/Arithmetic.h"
#include "values/Conversion.h"

namespace bukorval::dati {
namespace {

using values::Variant;

std::string cardsText(const DetailScope& scope) {
  TestoSql sql;
  sql.riga(" SELECT BU65_ID, BU65_CODICE_CG31, BU65_SCHEDA_BU07, ", contoDelPiano(scope.chart).conto, " AS CONTO ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .testo(condizioniSchede(scope.budget));
  return sql.str();
}

std::string amountsText(const DetailScope& scope) {
  TestoSql sql;
  sql.riga(" SELECT BU65_ID, BU66_PERIODO, ", scope.measure->column, " AS VALORE ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .riga(" INNER JOIN BU66_DETBUDGET WITH (NOLOCK) ")
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
  connection.ForEachRow(cardsText(scope), [this](const ado::Recordset& rows) {
    return [this, &id = rows["BU65_ID"], &site = rows["BU65_CODICE_CG31"], &code = rows["BU65_SCHEDA_BU07"],
            &account = rows["CONTO"]] {
      cards_.emplace(values::toInt64(id.Value()), Card{site.Value(), code.Value(), account.Value()});
    };
  });
  connection.ForEachRow(amountsText(scope), [this](const ado::Recordset& rows) {
    return [this, &id = rows["BU65_ID"], &period = rows["BU66_PERIODO"], &amount = rows["VALORE"]] {
      amounts_.emplace_back(Key{values::toInt64(id.Value()), values::toInt32(period.Value())}, amount.Value());
    };
  });
  // Rows come in the order of an index, which sorts few of them anew.
  if (!std::ranges::is_sorted(amounts_, {}, &Amount::first)) std::ranges::stable_sort(amounts_, {}, &Amount::first);
  // A detail may stand twice in a database that was made before their keys were unique: the last one counts.
  const auto sameKey = [](const Amount& a, const Amount& b) { return a.first == b.first; };
  amounts_.erase(amounts_.begin(), std::unique(amounts_.rbegin(), amounts_.rend(), sameKey).base());
}

const Variant& DetailSnapshot::amount(const Key& key) const {
  static const Variant kNull = Variant::Null();
  const auto found = std::ranges::lower_bound(amounts_, key, {}, &Amount::first);
  return found == amounts_.end() || found->first != key ? kNull : found->second;
}

std::vector<AmountChange> amountChanges(const DetailSnapshot& before, const DetailSnapshot& after) {
  static const Variant kNull = Variant::Null();
  std::vector<AmountChange> changes;
  const auto add = [&](const DetailSnapshot::Key& key, const Variant& was, const Variant& is) {
    if (same(was, is)) return;
    const auto card = after.cards().find(key.card);
    changes.push_back({key, card == after.cards().end() ? DetailSnapshot::Card{} : card->second, was, is});
  };
  auto was = before.amounts().begin(), is = after.amounts().begin();
  const auto noMore = before.amounts().end(), end = after.amounts().end();
  while (was != noMore || is != end) {
    const auto order = was == noMore ? std::strong_ordering::greater
                       : is == end   ? std::strong_ordering::less
                                     : was->first <=> is->first;
    if (order < 0)
      add(was->first, was->second, kNull);
    else
      add(is->first, order > 0 ? kNull : was->second, is->second);
    if (order <= 0) ++was;
    if (order >= 0) ++is;
  }
  return changes;
}

}  // namespace bukorval::dati
