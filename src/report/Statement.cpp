#include "report/Statement.h"

#include "frame/Enumerazioni.h"
#include "frame/TestoSql.h"

namespace bukorval::report {
namespace {

std::string axisName(std::size_t position) { return "ASSE" + std::to_string(position + 1); }

/// "ASSE1, ASSE2, GENERE".
std::string groupColumns(const Reading& reading) {
  std::string text;
  for (std::size_t i = 0; i < reading.axes.size(); ++i) text += axisName(i) + ", ";
  return text + "GENERE";
}

void cards(TestoSql& sql, const Reading& reading) {
  sql.riga(";WITH CTE_SCHEDE AS ").riga("( ").riga(" SELECT BU65_ID ");
  for (std::size_t i = 0; i < reading.axes.size(); ++i)
    sql.riga("      , ", reading.axes[i].expression, " AS ", axisName(i));
  sql.riga("      , BU65_INDCOSRIC_BU07 AS GENERE ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .testo(reading.conditions)
      .riga(") ");
}

void onlyPeriods(TestoSql& sql, const Reading& reading, std::string_view details) {
  if (reading.periods.empty()) return;
  std::string list;
  for (const int period : reading.periods) list += (list.empty() ? "" : ", ") + numero(period);
  sql.riga(" AND    ", details, ".BU66_PERIODO IN (", list, ") ");
}

/// Orders are not summed: of each card the latest row that has a value counts, in its period.
void latestOrders(TestoSql& sql, const Reading& reading) {
  sql.riga(", CTE_ULTIMI AS ")
      .riga("( ")
      .riga(" SELECT MAX(BU66_DETBUDGET.BU66_ID) AS ID ")
      .riga(" FROM   BU66_DETBUDGET WITH (NOLOCK) ")
      .riga(" INNER JOIN CTE_SCHEDE ON CTE_SCHEDE.BU65_ID = BU66_DETBUDGET.BU66_ID_BU65 ")
      .riga(" WHERE  BU66_DETBUDGET.BU66_TIPO = 2 AND NOT BU66_DETBUDGET.", reading.measure, " IS NULL ");
  onlyPeriods(sql, reading, "BU66_DETBUDGET");
  sql.riga(" GROUP BY BU66_DETBUDGET.BU66_ID_BU65 ").riga(") ");
}

/// Groups what has been read by axes and, where they are asked for, periods.
void grouped(TestoSql& sql, const Reading& reading, std::string_view details) {
  sql.testo(" GROUP BY ", groupColumns(reading));
  if (reading.byPeriod) sql.testo(", ", details, ".BU66_PERIODO");
  sql.riga(" ");
}

std::string periodColumn(const Reading& reading, std::string_view details) {
  return (reading.byPeriod ? std::string(details) + ".BU66_PERIODO" : "0") + " AS PERIODO ";
}

/// Every card comes, with or without details.
void everyCard(TestoSql& sql, const Reading& reading) {
  sql.riga(" SELECT DISTINCT ", groupColumns(reading),
           ", NULL AS VOCE, 0 AS PERIODO, NULL AS VALORE, NULL AS CONSUNTIVO ")
      .riga(" FROM   CTE_SCHEDE ");
}

/// A kind a query, so that each reads one part of the index that has all of them.
void sums(TestoSql& sql, const Reading& reading, int kind) {
  sql.riga(" UNION ALL ")
      .riga(" SELECT ", groupColumns(reading), ", ", numero(kind), " AS VOCE ")
      .riga("      , ", periodColumn(reading, "BU66_DETBUDGET"))
      .riga("      , SUM(BU66_DETBUDGET.", reading.measure, ") AS VALORE ")
      .riga("      , NULL AS CONSUNTIVO ")
      .riga(" FROM   CTE_SCHEDE ")
      .riga(" INNER JOIN BU66_DETBUDGET WITH (NOLOCK) ")
      .riga(" ON     BU66_DETBUDGET.BU66_ID_BU65 = CTE_SCHEDE.BU65_ID ")
      .riga(" AND    BU66_DETBUDGET.BU66_TIPO = ", numero(kind), " ");
  onlyPeriods(sql, reading, "BU66_DETBUDGET");
  grouped(sql, reading, "BU66_DETBUDGET");
}

void orders(TestoSql& sql, const Reading& reading) {
  sql.riga(" UNION ALL ")
      .riga(" SELECT ", groupColumns(reading), ", 2 AS VOCE ")
      .riga("      , ", periodColumn(reading, "BU66_DETBUDGET"))
      .riga("      , SUM(BU66_DETBUDGET.", reading.measure, ") AS VALORE ")
      .riga("      , NULL AS CONSUNTIVO ")
      .riga(" FROM   CTE_ULTIMI ")
      .riga(" INNER JOIN BU66_DETBUDGET WITH (NOLOCK) ON BU66_DETBUDGET.BU66_ID = CTE_ULTIMI.ID ")
      .riga(" INNER JOIN CTE_SCHEDE ON CTE_SCHEDE.BU65_ID = BU66_DETBUDGET.BU66_ID_BU65 ");
  grouped(sql, reading, "BU66_DETBUDGET");
}

/// A forecast takes, period by period, the actual value where there is one: the two parts of the grid's sum.
void forecast(TestoSql& sql, const Reading& reading, int number) {
  const auto& column = reading.measure;
  sql.riga(" UNION ALL ")
      .riga(" SELECT ", groupColumns(reading), ", ", numero(2 + number), " AS VOCE ")
      .riga("      , ", periodColumn(reading, "BU66_FORECAST"))
      .riga("      , SUM(CASE WHEN BU66_CONS.", column, " IS NULL THEN BU66_FORECAST.", column, " END) AS VALORE ")
      .riga("      , SUM(BU66_CONS.", column, ") AS CONSUNTIVO ")
      .riga(" FROM   CTE_SCHEDE ")
      .riga(" INNER JOIN BU66_DETBUDGET AS BU66_FORECAST WITH (NOLOCK) ")
      .riga(" ON     BU66_FORECAST.BU66_ID_BU65 = CTE_SCHEDE.BU65_ID ")
      .riga(" AND    BU66_FORECAST.BU66_TIPO = ", numero(2 + number), " ");
  onlyPeriods(sql, reading, "BU66_FORECAST");
  sql.riga(" LEFT OUTER JOIN BU66_DETBUDGET AS BU66_CONS WITH (NOLOCK) ")
      .riga(" ON     BU66_CONS.BU66_ID_BU65 = BU66_FORECAST.BU66_ID_BU65 ")
      .riga(" AND    BU66_CONS.BU66_PERIODO = BU66_FORECAST.BU66_PERIODO ")
      .riga(" AND    BU66_CONS.BU66_TIPO = 1 ");
  grouped(sql, reading, "BU66_FORECAST");
}

}  // namespace

std::string statement(const Reading& reading) {
  TestoSql sql;
  cards(sql, reading);
  if (reading.orders) latestOrders(sql, reading);
  everyCard(sql, reading);
  if (reading.budgetOrActual)
    for (const int kind : {bdgDettaglioBudget, bdgDettaglioConsuntivo}) sums(sql, reading, kind);
  if (reading.orders) orders(sql, reading);
  for (const int number : reading.forecasts) forecast(sql, reading, number);
  return sql.str();
}

}  // namespace bukorval::report
