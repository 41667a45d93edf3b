#include "dati/CardDetails.h"

#include "frame/TestoSql.h"

namespace bukorval::dati {

using values::Variant;

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
