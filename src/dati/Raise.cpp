#include "dati/Raise.h"

#include "dati/Cards.h"
#include "frame/BudgetAnno.h"
#include "frame/TestoSql.h"
#include "values/Conversion.h"

namespace bukorval::dati {

using values::Decimal;

Decimal raisingFactor(const Decimal& percentage) {
  return Decimal::FromScaled(1) + percentage / Decimal::FromScaled(100);
}

std::set<std::int64_t> selectedCards(const CLSKORVAL& budget, ado::Connection& connection) {
  TestoSql sql;
  sql.riga(" SELECT BU65_ID ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .testo(condizioniSchede(budgetScelto(budget)));
  if (!values::isBlank(budget.CodiceSede)) sql.riga(" AND    BU65_CODICE_CG31 = ", numero(budget.CodiceSede));
  if (!values::isBlank(budget.BdgTipoScheda)) sql.riga(" AND    BU65_INDCOSRIC_BU07 = ", numero(budget.BdgTipoScheda));
  if (!values::isBlank(budget.DaScheda))
    sql.riga(" AND    BU65_SCHEDA_BU07 >= ", apiciRiempiti(budget.DaScheda, kLarghezzaScheda));
  if (!values::isBlank(budget.AScheda))
    sql.riga(" AND    BU65_SCHEDA_BU07 <= ", apiciRiempiti(budget.AScheda, kLarghezzaScheda));
  std::set<std::int64_t> cards;
  const auto rs = connection.Execute(sql);
  const auto& id = (*rs)["BU65_ID"];
  for (; !rs->Eof(); rs->MoveNext()) cards.insert(values::toInt64(id.Value()));
  return cards;
}

int raiseAmounts(CLSKORVAL& budget, const DetailSnapshot& amounts, const std::set<DetailSnapshot::Key>& cells,
                 BdgTipoDettaglio kind, const Measure& measure, const Decimal& factor) {
  int written = 0;
  for (const auto& key : cells) {
    const auto& amount = amounts.amount(key);
    if (amount.isNothing()) continue;
    writeCardValue(budget, key.card, kind, key.period, measure.kind,
                   (values::toDecimal(amount) * factor).rounded(measure.decimals));
    ++written;
  }
  return written;
}

}  // namespace bukorval::dati
