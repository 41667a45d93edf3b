#include "dati/Checks.h"

#include <array>
#include <optional>
#include <span>
#include <string_view>

#include "dati/CardRows.h"
#include "dati/Cards.h"
#include "dati/Failure.h"
#include "frame/TestoSql.h"
#include "values/Arithmetic.h"
#include "values/Conversion.h"

namespace bukorval::dati {
namespace {

using values::Variant;

CheckResult run(ado::Connection& connection, std::string check, std::string_view key, const TestoSql& sql) {
  const auto rs = connection.Execute(sql);
  CheckResult result{std::move(check), values::toInt64((*rs)["N"].Value()), {}};
  if (result.findings > 0) result.example = std::string(key) + " " + values::toPlainText((*rs)["ESEMPIO"].Value());
  return result;
}

CheckResult rowsWithoutCard(ado::Connection& connection, std::string_view table, std::string_view column) {
  TestoSql sql;
  sql.riga(" SELECT COUNT(*) AS N, MIN(", column, ") AS ESEMPIO ")
      .riga(" FROM   ", table, " WITH (NOLOCK) ")
      .riga(" WHERE  NOT EXISTS ")
      .riga("        (SELECT 1 FROM BU65_TESBUDGET WITH (NOLOCK) WHERE BU65_ID = ", column, ") ");
  return run(connection, std::string(table) + ": rows without a card", column, sql);
}

CheckResult cardsWithoutDetails(ado::Connection& connection) {
  TestoSql sql;
  sql.riga(" SELECT COUNT(*) AS N, MIN(BU65_ID) AS ESEMPIO ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .riga(" WHERE  NOT EXISTS ")
      .riga("        (SELECT 1 FROM BU66_DETBUDGET WITH (NOLOCK) WHERE BU66_ID_BU65 = BU65_ID) ");
  return run(connection, "BU65_TESBUDGET: cards without details", "BU65_ID", sql);
}

/// Not every budget keeps terms; where one card of a year does, each of them should.
CheckResult cardsWithoutCashFlow(ado::Connection& connection) {
  TestoSql sql;
  sql.riga(" ; WITH CTE_CASHFLOW AS ")
      .riga(" ( ")
      .riga(
          "    SELECT DISTINCT BU65_DITTA_CG18 AS DITTA, BU65_INDTIPO_BU01 AS TIPO, BU65_SOTTOTIPO_BU01 AS SOTTOTIPO, ")
      .riga("           BU65_ANNO AS ANNO, BU65_PROGESER AS PROGESER ")
      .riga("    FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .riga("    INNER JOIN BU67_BDGCASHFLOW WITH (NOLOCK) ON BU67_ID_BU65 = BU65_ID ")
      .riga(" ) ")
      .riga(" SELECT COUNT(*) AS N, MIN(BU65_ID) AS ESEMPIO ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .riga(" INNER JOIN CTE_CASHFLOW ON  DITTA = BU65_DITTA_CG18 AND TIPO = BU65_INDTIPO_BU01 ")
      .riga("                         AND SOTTOTIPO = BU65_SOTTOTIPO_BU01 AND ANNO = BU65_ANNO ")
      .riga("                         AND PROGESER = BU65_PROGESER ")
      .riga(" LEFT OUTER JOIN BU67_BDGCASHFLOW WITH (NOLOCK) ON BU67_ID_BU65 = BU65_ID ")
      .riga(" WHERE  BU67_ID_BU65 IS NULL ");
  return run(connection, "BU65_TESBUDGET: cards without terms where others have them", "BU65_ID", sql);
}

/// Orders may have several rows for a card and period.
CheckResult detailsTwice(ado::Connection& connection) {
  TestoSql sql;
  sql.riga(" ; WITH CTE_DOPPI AS ")
      .riga(" ( ")
      .riga("    SELECT MAX(BU66_ID) AS ID ")
      .riga("    FROM   BU66_DETBUDGET WITH (NOLOCK) ")
      .riga("    WHERE  BU66_TIPO <> ", numero(int{bdgDettaglioOrdini}))
      .riga("    GROUP  BY BU66_ID_BU65, BU66_TIPO, BU66_PERIODO ")
      .riga("    HAVING COUNT(*) > 1 ")
      .riga(" ) ")
      .riga(" SELECT COUNT(*) AS N, MIN(ID) AS ESEMPIO FROM CTE_DOPPI ");
  return run(connection, "BU66_DETBUDGET: details that stand twice", "BU66_ID", sql);
}

/// The sums of a grid and where they come from.
struct Sum {
  const char* field;
  Variant details, grid = Variant::Null();
};

struct BudgetYear {
  std::int32_t type = 0;
  Variant subtype, year, progressive;
  std::array<Sum, 2> sums;
};

std::vector<BudgetYear> budgetYears(ado::Connection& connection, const Variant& company) {
  TestoSql sql;
  sql.riga(" SELECT BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_ANNO, BU65_PROGESER, ")
      .riga("        SUM(CASE WHEN BU66_TIPO = 0 THEN BU66_IMPORTO END) AS BUDGET, ")
      .riga("        SUM(CASE WHEN BU66_TIPO = 1 THEN BU66_IMPORTO END) AS CONSUNTIVO ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .riga(" LEFT OUTER JOIN BU66_DETBUDGET WITH (NOLOCK) ON BU66_ID_BU65 = BU65_ID ")
      .riga(" WHERE  BU65_DITTA_CG18 = ", numero(company))
      .riga(" GROUP  BY BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_ANNO, BU65_PROGESER ")
      .riga(" ORDER  BY BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_ANNO, BU65_PROGESER ");
  std::vector<BudgetYear> years;
  const auto rs = connection.Execute(sql);
  for (; !rs->Eof(); rs->MoveNext()) {
    const auto value = [&](const char* field) { return (*rs)[field].Value(); };
    years.push_back({values::toInt32(value("BU65_INDTIPO_BU01")),
                     value("BU65_SOTTOTIPO_BU01"),
                     value("BU65_ANNO"),
                     value("BU65_PROGESER"),
                     {Sum{"IMP_BUDGET", value("BUDGET")}, Sum{"IMP_CONSUNTIVO", value("CONSUNTIVO")}}});
  }
  return years;
}

void addGrid(CLSKORVAL& budget, BudgetYear& year) {
  const auto grid = budget.RecordSetBudget();
  requireSuccess(budget);
  for (; !grid->Eof(); grid->MoveNext())
    for (auto& sum : year.sums) {
      const auto& value = (*grid)[sum.field].Value();
      if (!value.isNothing()) sum.grid = sum.grid.isNull() ? value : values::add(sum.grid, value);
    }
}

/// Sites and card kinds that the budget is shown by; one Null where it is shown by none.
std::vector<Variant> sitesOf(CLSKORVAL& budget, ado::Connection& connection, const BudgetYear& year) {
  bool perSite = false;
  budget.GetGestioneSede(year.type, year.subtype, perSite);
  requireSuccess(budget);
  if (!perSite) return {Variant::Null()};
  const auto sites =
      sitesWithCards(connection, {budget.CodiceDitta, year.type, year.subtype, year.year, year.progressive});
  return sites->Items();
}

void addGrids(CLSKORVAL& budget, ado::Connection& connection, BudgetYear& year) {
  budget.TipoBudget = year.type;
  budget.SottoTipoBudget = year.subtype;
  budget.AnnoEsercizio = year.year;
  budget.ProgressivoEsercizio = year.progressive;
  const bool byKind = year.type == bdgTipoSpeseGenerali;
  for (const auto& site : sitesOf(budget, connection, year)) {
    budget.CodiceSede = site;
    for (const int kind : {0, 1}) {
      if (!byKind && kind > 0) continue;
      budget.BdgTipoScheda = byKind ? Variant(kind) : Variant::Null();
      addGrid(budget, year);
    }
  }
}

std::string nameOf(const BudgetYear& year) {
  return "budget " + std::to_string(year.type) + " " + values::toPlainText(year.subtype) + " of " +
         values::toPlainText(year.year);
}

/// What is wrong with a budget's year; nothing when its grids add up.
std::optional<std::string> difference(CLSKORVAL& budget, ado::Connection& connection, BudgetYear year) try {
  addGrids(budget, connection, year);
  for (const auto& [field, details, grid] : year.sums)
    if (values::compare(values::nvl(details, 0), values::nvl(grid, 0)) != 0)
      return nameOf(year) + ": " + field + " " + values::toPlainText(values::nvl(grid, 0)) + ", details " +
             values::toPlainText(values::nvl(details, 0));
  return std::nullopt;
} catch (const Failure& failure) {
  return nameOf(year) + ": " + failure.what();
}

}  // namespace

std::vector<CheckResult> checkRows(ado::Connection& connection) {
  std::vector<CheckResult> results;
  for (const auto& each : std::span(kCardTables).subspan(1))
    results.push_back(rowsWithoutCard(connection, each.table, each.card));
  for (auto* const check : {cardsWithoutDetails, cardsWithoutCashFlow, detailsTwice})
    results.push_back(check(connection));
  return results;
}

CheckResult checkGrids(CLSKORVAL& budget, ado::Connection& connection) {
  CheckResult result{"Grids that do not add up to their details", 0, {}};
  for (const auto& year : budgetYears(connection, budget.CodiceDitta)) {
    const auto wrong = difference(budget, connection, year);
    if (wrong && result.findings++ == 0) result.example = *wrong;
  }
  return result;
}

}  // namespace bukorval::dati
