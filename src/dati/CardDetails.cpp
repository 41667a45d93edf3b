#include "dati/CardDetails.h"

#include <string>

#include "dati/Failure.h"
#include "frame/BudgetAnno.h"
#include "frame/CriteriPreallocazione.h"
#include "frame/TestoSql.h"

namespace bukorval::dati {

using values::Variant;

namespace {

/// From the list of columns to the joins of their descriptions.
std::string columnsOfCards(CLSKORVAL& budget, const std::string& list) {
  TestoSql sql;
  sql.riga("        BU65_ID, BU65_DITTA_CG18, BU65_TIPOCF_CG44, ", list, " ")
      .riga(budget.GetStringaCodiciDescrizioni(list, "       "));
  if (budget.TipoBudget == bdgTipoMastri)
    criteriPreallocazione(sql);
  else
    sql.riga("       ,NULL AS FLGESISTECRITPREL ");
  sql.riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ").riga(budget.GetStringaJoinCodiciDescrizioni(list));
  requireSuccess(budget);
  return sql.str();
}

}  // namespace

ado::RecordsetPtr codesOf(CLSKORVAL& budget, ado::Connection& connection, const Variant& card) {
  const auto list = budget.GetElencoCampi(budget.TipoBudget, budget.SottoTipoBudget);
  TestoSql sql;
  sql.riga(" SELECT ").testo(columnsOfCards(budget, list)).riga(" WHERE  BU65_ID = ", numero(card));
  return connection.Execute(sql);
}

ado::RecordsetPtr firstCodes(CLSKORVAL& budget, ado::Connection& connection, int count) {
  const auto list = budget.GetElencoCampi(budget.TipoBudget, budget.SottoTipoBudget);
  bool perSite = false;
  budget.GetGestioneSede(budget.TipoBudget, budget.SottoTipoBudget, perSite);
  TestoSql sql;
  sql.riga(" SELECT TOP ", numero(count))
      .testo(columnsOfCards(budget, list))
      .testo(condizioniSchede(budgetScelto(budget), kRientro, SottoTipo::ComeDato));
  if (budget.TipoBudget == bdgTipoSpeseGenerali)
    sql.riga(" AND    BU65_INDCOSRIC_BU07 = ", numero(budget.BdgTipoScheda));
  if (perSite) sql.riga(" AND    BU65_CODICE_CG31 = ", numero(budget.CodiceSede));
  sql.riga(" ORDER BY ", list);
  return connection.Execute(sql);
}

Variant latestOrderOf(ado::Connection& connection, const Variant& card, const Measure& measure) {
  TestoSql sql;
  sql.riga(" SELECT TOP 1 ", measure.column, " AS VALORE ")
      .riga(" FROM   BU66_DETBUDGET WITH (NOLOCK) ")
      .riga(" WHERE  BU66_ID_BU65 = ", numero(card))
      .riga(" AND    BU66_TIPO = ", numero(BdgTipoDettaglio{bdgDettaglioOrdini}))
      .riga(" AND    NOT ", measure.column, " IS NULL ")
      .riga(" ORDER BY BU66_ID DESC ");
  const auto rs = connection.Execute(sql);
  return rs->Eof() ? Variant::Null() : (*rs)["VALORE"].Value();
}

CardTerms termsOf(ado::Connection& connection, const Variant& card) {
  TestoSql sql;
  sql.riga(" SELECT BU65_DATAULTAGG, BU67_FLGSCADMAN, BU67_TIPOCF_CG44, BU67_CLIFOR_CG44, ")
      .riga("        BU67_DATAINIVAL, BU67_NUMRATE, BU67_MESIRATA, BU67_GIORNISCAD ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .riga(" LEFT OUTER JOIN BU67_BDGCASHFLOW WITH (NOLOCK) ON BU67_ID_BU65 = BU65_ID ")
      .riga(" WHERE  BU65_ID = ", numero(card));
  const auto rs = connection.Execute(sql);
  if (rs->Eof()) return {};
  const auto value = [&](const char* field) { return (*rs)[field].Value(); };
  return {value("BU65_DATAULTAGG"), value("BU67_FLGSCADMAN"), value("BU67_TIPOCF_CG44"), value("BU67_CLIFOR_CG44"),
          value("BU67_DATAINIVAL"), value("BU67_NUMRATE"),    value("BU67_MESIRATA"),    value("BU67_GIORNISCAD")};
}

std::vector<CardPercentage> percentagesOf(ado::Connection& connection, const Variant& card) {
  TestoSql sql;
  sql.riga(" SELECT BU90_PROGR, BU90_PERCRIP, BU90_PERCSCO ")
      .riga(" FROM   BU90_TABPERCBUD WITH (NOLOCK) ")
      .riga(" WHERE  BU90_IDBUDGET = ", numero(card))
      .riga(" ORDER BY BU90_PROGR ");
  std::vector<CardPercentage> found;
  const auto rs = connection.Execute(sql);
  for (; !rs->Eof(); rs->MoveNext())
    found.push_back({(*rs)["BU90_PROGR"].Value(), (*rs)["BU90_PERCRIP"].Value(), (*rs)["BU90_PERCSCO"].Value()});
  return found;
}

std::vector<DueDate> dueDatesOf(ado::Connection& connection, const Variant& card) {
  TestoSql sql;
  sql.riga(" SELECT BU14_ID, BU14_PERIODO, BU14_DATASCAD, BU14_IMPORTO, BU14_FLGMANUAL ")
      .riga(" FROM   BU14_SCADCFLOW WITH (NOLOCK) ")
      .riga(" WHERE  BU14_IDBUDGET = ", numero(card))
      .riga(" ORDER BY BU14_DATASCAD, BU14_ID ");
  std::vector<DueDate> found;
  const auto rs = connection.Execute(sql);
  const auto value = [&](const char* field) { return (*rs)[field].Value(); };
  for (; !rs->Eof(); rs->MoveNext())
    found.push_back({value("BU14_ID"), value("BU14_PERIODO"), value("BU14_DATASCAD"), value("BU14_IMPORTO"),
                     value("BU14_FLGMANUAL")});
  return found;
}

}  // namespace bukorval::dati
