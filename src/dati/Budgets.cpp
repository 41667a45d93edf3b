#include "dati/Budgets.h"

#include <map>
#include <string>
#include <utility>

#include "dati/RowInsert.h"
#include "frame/TestoSql.h"
#include "values/Conversion.h"

namespace bukorval::dati {
namespace {

using BudgetKey = std::pair<std::int32_t, std::string>;

std::map<BudgetKey, std::vector<CardsOfYear>> cardsByYear(ado::Connection& connection, const values::Variant& company) {
  TestoSql sql;
  sql.riga(" SELECT BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_ANNO, COUNT(*) AS SCHEDE ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .riga(" WHERE  BU65_DITTA_CG18 = ", numero(company))
      .riga(" GROUP  BY BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_ANNO ")
      .riga(" ORDER  BY BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_ANNO ");
  std::map<BudgetKey, std::vector<CardsOfYear>> years;
  const auto rs = connection.Execute(sql);
  for (; !rs->Eof(); rs->MoveNext()) {
    const BudgetKey key{values::toInt32((*rs)["BU65_INDTIPO_BU01"].Value()),
                        values::toPlainText((*rs)["BU65_SOTTOTIPO_BU01"].Value())};
    years[key].push_back({(*rs)["BU65_ANNO"].Value(), (*rs)["SCHEDE"].Value()});
  }
  return years;
}

}  // namespace

std::vector<DefinedBudget> definedBudgets(ado::Connection& connection, const values::Variant& company) {
  TestoSql sql;
  sql.riga(" SELECT BU01_INDTIPO, BU01_SOTTOTIPO, BU01_DESCR ")
      .riga(" FROM   BU01_ANABUDGET WITH (NOLOCK) ")
      .riga(" ORDER  BY BU01_INDTIPO, BU01_SOTTOTIPO ");
  auto years = cardsByYear(connection, company);
  std::vector<DefinedBudget> budgets;
  const auto rs = connection.Execute(sql);
  for (; !rs->Eof(); rs->MoveNext()) {
    auto& budget = budgets.emplace_back(DefinedBudget{values::toInt32((*rs)["BU01_INDTIPO"].Value()),
                                                      (*rs)["BU01_SOTTOTIPO"].Value(),
                                                      (*rs)["BU01_DESCR"].Value(),
                                                      {}});
    budget.years = std::move(years[{budget.type, values::toPlainText(budget.subtype)}]);
  }
  return budgets;
}

bool isBudgetDefined(ado::Connection& connection, const values::Variant& type, const values::Variant& subtype) {
  TestoSql sql;
  sql.riga(" SELECT TOP 1 1 ")
      .riga(" FROM   BU01_ANABUDGET WITH (NOLOCK) ")
      .riga(" WHERE  BU01_INDTIPO = ", numero(type))
      .riga(" AND    BU01_SOTTOTIPO = ", testoDati(subtype));
  return connection.Execute(sql)->RecordCount() > 0;
}

void defineBudget(ado::Connection& connection, const BudgetDefinition& definition) {
  RowInsert("BU01_ANABUDGET")
      .set("BU01_INDTIPO", definition.type)
      .set("BU01_SOTTOTIPO", definition.subtype)
      .set("BU01_DESCR", definition.description)
      .set("BU01_STRUTTURA", definition.structure)
      .set("BU01_FLGSEDI", definition.perSite)
      .set("BU01_INDPERIODO", definition.periodicity)
      .set("BU01_INDPERFISO", definition.calendarYear)
      .set("BU01_NUMFORECAST", definition.forecasts)
      .set("BU01_FLGGESQTA", definition.quantity1)
      .set("BU01_FLGGESQTA2", definition.quantity2)
      .run(connection);
}

}  // namespace bukorval::dati
