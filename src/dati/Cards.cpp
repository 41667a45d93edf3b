#include "dati/Cards.h"

#include <memory>
#include <set>

#include "dati/CardRows.h"
#include "dati/Failure.h"
#include "dati/KeyLists.h"
#include "frame/TestoSql.h"
#include "language/Language.h"
#include "values/Conversion.h"

namespace bukorval::dati {
namespace {

values::Variant single(ado::Connection& connection, const TestoSql& sql) {
  return connection.Execute(sql)->Fields().Item(std::size_t{0}).Value();
}

std::int32_t countRows(ado::Connection& connection, std::string_view table, std::string_view column,
                       const values::Variant& card) {
  TestoSql sql;
  sql.riga(" SELECT COUNT(*) AS N ")
      .riga(" FROM   ", table, " WITH (NOLOCK) ")
      .riga(" WHERE  ", column, " = ", numero(card));
  return values::toInt32(single(connection, sql));
}

std::string condition(const values::Variant& value) {
  if (value.isNothing()) return " IS NULL";
  return " = " + (value.isNumber() ? numero(value) : testoDati(value));
}

}  // namespace

bool selectBudgetOfCard(CLSKORVAL& budget, ado::Connection& connection, const values::Variant& card) {
  TestoSql sql;
  sql.riga(" SELECT BU65_DITTA_CG18, BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, ")
      .riga("        BU65_ANNO, BU65_PROGESER, BU65_CODICE_CG31, BU65_INDCOSRIC_BU07 ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .riga(" WHERE  BU65_ID = ", numero(card));
  const auto rs = connection.Execute(sql);
  if (rs->Eof()) return false;
  const auto value = [&](const char* field) { return rs->Fields().Item(field).Value(); };
  selectBudget(budget, {value("BU65_DITTA_CG18"), values::toInt32(value("BU65_INDTIPO_BU01")),
                        value("BU65_SOTTOTIPO_BU01"), value("BU65_ANNO"), value("BU65_PROGESER")});
  budget.CodiceSede = value("BU65_CODICE_CG31");
  budget.BdgTipoScheda = value("BU65_INDCOSRIC_BU07");
  return true;
}

void selectBudget(CLSKORVAL& budget, const BudgetAnno& selected) {
  budget.CodiceDitta = selected.ditta;
  budget.TipoBudget = selected.tipo;
  budget.SottoTipoBudget = selected.sottoTipo;
  budget.AnnoEsercizio = selected.anno;
  budget.ProgressivoEsercizio = selected.progressivo;
  budget.CodiceSede = values::Variant();
  budget.BdgTipoScheda = values::Variant();
}

values::Variant lastCardCode(ado::Connection& connection, const BudgetAnno& budget) {
  TestoSql sql;
  sql.riga(" SELECT MAX(BU65_SCHEDA_BU07) AS ULTIMA ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .testo(condizioniSchede(budget));
  return single(connection, sql);
}

std::vector<BudgetAnno> budgetsOfCards(ado::Connection& connection, const std::vector<std::int64_t>& cards) {
  std::vector<BudgetAnno> budgets;
  std::set<std::string> seen;
  for (const auto& list : keyLists(cards)) {
    TestoSql sql;
    sql.riga(" SELECT DISTINCT BU65_DITTA_CG18, BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_ANNO, BU65_PROGESER ")
        .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
        .riga(" WHERE  BU65_ID IN (", list, ")");
    const auto rs = connection.Execute(sql);
    const auto value = [&](const char* field) { return (*rs)[field].Value(); };
    for (; !rs->Eof(); rs->MoveNext()) {
      const BudgetAnno budget{value("BU65_DITTA_CG18"), values::toInt32(value("BU65_INDTIPO_BU01")),
                              value("BU65_SOTTOTIPO_BU01"), value("BU65_ANNO"), value("BU65_PROGESER")};
      if (seen.insert(condizioniSchede(budget)).second) budgets.push_back(budget);
    }
  }
  return budgets;
}

std::int32_t countDetails(ado::Connection& connection, const values::Variant& card) {
  return countRows(connection, "BU66_DETBUDGET", "BU66_ID_BU65", card);
}

std::vector<RowsOfTable> countRowsOfCard(ado::Connection& connection, const values::Variant& card) {
  std::vector<RowsOfTable> counts;
  for (const auto& table : kCardTables)
    counts.push_back({table.table, countRows(connection, table.table, table.card, card)});
  return counts;
}

ado::DictionaryPtr sitesWithCards(ado::Connection& connection, const BudgetAnno& budget) {
  TestoSql sql;
  sql.riga(" SELECT DISTINCT BU65_CODICE_CG31 FROM BU65_TESBUDGET WITH (NOLOCK) ")
      .testo(condizioniSchede(budget))
      .riga(" AND    BU65_CODICE_CG31 IS NOT NULL ")
      .riga(" ORDER BY BU65_CODICE_CG31 ");
  auto sites = std::make_shared<ado::Dictionary>();
  const auto rs = connection.Execute(sql);
  const auto& site = (*rs)["BU65_CODICE_CG31"];
  for (; !rs->Eof(); rs->MoveNext()) sites->Add(site.Value(), site.Value());
  return sites;
}

std::vector<CardColumn> cardColumns(CLSKORVAL& budget, ado::Connection& connection) {
  const auto list = budget.GetElencoCampi(budget.TipoBudget, budget.SottoTipoBudget);
  requireSuccess(budget);
  TestoSql sql;
  sql.riga(" SELECT TOP 1 ", list).riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ");
  const auto rs = connection.Execute(sql);
  std::vector<CardColumn> columns;
  for (std::size_t i = 0; i < rs->Fields().Count(); ++i) {
    const auto& field = rs->Fields().Item(i);
    const bool number = field.Type() == ado::adDecimal || field.Type() == ado::adNumeric ||
                        field.Type() == ado::adSmallInt || field.Type() == ado::adInteger;
    columns.push_back({field.Name(), number, number ? static_cast<int>(field.Precision()) : field.DefinedSize()});
  }
  return columns;
}

std::vector<CardColumn> keyColumns(CLSKORVAL& budget, ado::Connection& connection) {
  auto columns = cardColumns(budget, connection);
  std::erase_if(columns, [](const auto& column) { return column.name.starts_with("BU65_FLG"); });
  return columns;
}

std::vector<values::Variant> findCards(ado::Connection& connection, const BudgetAnno& budget, const CardKey& key) {
  TestoSql sql;
  sql.riga(" SELECT BU65_ID ").riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ").testo(condizioniSchede(budget));
  for (const auto& [column, value] : key) sql.riga(" AND    ", column, condition(value));
  const auto rs = connection.Execute(sql);
  std::vector<values::Variant> cards;
  for (; !rs->Eof(); rs->MoveNext()) cards.push_back((*rs)["BU65_ID"].Value());
  return cards;
}

std::map<int, values::Variant> amountsOfCard(ado::Connection& connection, const values::Variant& card,
                                             BdgTipoDettaglio kind, const Measure& measure) {
  TestoSql sql;
  sql.riga(" SELECT BU66_PERIODO, ", measure.column, " AS VALORE ")
      .riga(" FROM   BU66_DETBUDGET WITH (NOLOCK) ")
      .riga(" WHERE  BU66_ID_BU65 = ", numero(card))
      .riga(" AND    BU66_TIPO = ", numero(kind))
      .riga(" ORDER BY BU66_ID ");
  std::map<int, values::Variant> amounts;
  const auto rs = connection.Execute(sql);
  for (; !rs->Eof(); rs->MoveNext()) amounts[values::toInt32((*rs)["BU66_PERIODO"].Value())] = (*rs)["VALORE"].Value();
  return amounts;
}

void writeCardValue(CLSKORVAL& budget, const values::Variant& card, BdgTipoDettaglio kind, int period,
                    BdgTipoValore measure, const values::Variant& value) {
  values::Variant detail, withoutAmount, newDetail;
  budget.GetBdgDettaglioEsiste(card, kind, period, detail, withoutAmount);
  requireSuccess(budget);
  budget.AggiornaSingoloValoreBU66(detail, card, kind, measure, static_cast<std::int16_t>(period), value, newDetail);
  requireSuccess(budget);
}

void writeDetailValue(CLSKORVAL& budget, ado::Connection& connection, const values::Variant& card,
                      BdgTipoDettaglio kind, int period, const values::Variant& detail, BdgTipoValore measure,
                      const values::Variant& value) {
  TestoSql sql;
  sql.riga(" SELECT BU66_ID ")
      .riga(" FROM   BU66_DETBUDGET WITH (NOLOCK) ")
      .riga(" WHERE  BU66_ID = ", numero(detail))
      .riga(" AND    BU66_ID_BU65 = ", numero(card))
      .riga(" AND    BU66_TIPO = ", numero(kind))
      .riga(" AND    BU66_PERIODO = ", numero(period));
  if (connection.Execute(sql)->Eof())
    throw Refused(tr("The card has no detail {} of this kind in period {}", values::toPlainText(detail), period));
  values::Variant none;
  budget.AggiornaSingoloValoreBU66(detail, card, kind, measure, static_cast<std::int16_t>(period), value, none);
  requireSuccess(budget);
}

}  // namespace bukorval::dati
