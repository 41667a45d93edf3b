#include "report/Statement.h"

#include "frame/Enumerazioni.h"
#include "frame/TestoSql.h"

namespace bukorval::report {
namespace {

std::string axisName(std::size_t position) { return "ASSE" + std::to_string(position + 1); }

/// The codes of the axes and the card kind in one text: what tells a group of cards from another.
std::string groupKey(const Reading& reading) {
  const auto part = [](const CardAxis& axis) {
    return "ISNULL('+' + " + (axis.number ? "CONVERT(NVARCHAR(10), " + axis.expression + ")" : axis.expression) +
           ", '')";
  };
  std::string text;
  for (const auto& axis : reading.axes) text += part(axis) + " + '|' + ";
  return text + "ISNULL(CONVERT(NVARCHAR(10), BU65_INDCOSRIC_BU07), '')";
}

/// Each group of cards is known by the first of them, so that the details are put together by a number.
void cards(TestoSql& sql, const Reading& reading) {
  sql.riga(";WITH CTE_SCHEDE AS ").riga("( ").riga(" SELECT BU65_ID ");
  for (std::size_t i = 0; i < reading.axes.size(); ++i)
    sql.riga("      , ", reading.axes[i].expression, " AS ", axisName(i));
  sql.riga("      , BU65_INDCOSRIC_BU07 AS GENERE ")
      .riga("      , ", groupKey(reading), " AS CHIAVE ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .testo(reading.conditions)
      .riga(") ")
      .riga(", CTE_GRUPPI AS ")
      .riga("( ")
      .riga(" SELECT CHIAVE, MIN(BU65_ID) AS GRUPPO ")
      .riga(" FROM   CTE_SCHEDE ")
      .riga(" GROUP BY CHIAVE ")
      .riga(") ")
      .riga(", CTE_NUMERATE AS ")
      .riga("( ")
      .riga(" SELECT CTE_SCHEDE.BU65_ID, CTE_GRUPPI.GRUPPO ")
      .riga(" FROM   CTE_SCHEDE ")
      .riga(" INNER JOIN CTE_GRUPPI ON CTE_GRUPPI.CHIAVE = CTE_SCHEDE.CHIAVE ")
      .riga(") ");
}

void onlyPeriods(TestoSql& sql, const Reading& reading, std::string_view details) {
  if (reading.periods.empty()) return;
  std::string list;
  for (const int period : reading.periods) list += (list.empty() ? "" : ", ") + numero(period);
  sql.riga(" AND    ", details, ".BU66_PERIODO IN (", list, ") ");
}

/// The details of a kind, sought card by card: the join is an outer one so that no engine begins with the details of
/// every budget.
void detailsOfCards(TestoSql& sql, const Reading& reading, std::string_view name, int kind) {
  sql.riga(" FROM   CTE_NUMERATE ")
      .riga(" LEFT OUTER JOIN BU66_DETBUDGET AS ", name, " WITH (NOLOCK) ")
      .riga(" ON     ", name, ".BU66_ID_BU65 = CTE_NUMERATE.BU65_ID ")
      .riga(" AND    ", name, ".BU66_TIPO = ", numero(kind), " ");
  onlyPeriods(sql, reading, name);
}

/// Orders are not summed: of each card the latest row that has a value counts, in its period.
void latestOrders(TestoSql& sql, const Reading& reading) {
  sql.riga(", CTE_ULTIMI AS ").riga("( ").riga(" SELECT CTE_NUMERATE.GRUPPO, MAX(BU66_ORDINI.BU66_ID) AS ID ");
  detailsOfCards(sql, reading, "BU66_ORDINI", bdgDettaglioOrdini);
  sql.riga(" AND    NOT BU66_ORDINI.", reading.measure, " IS NULL ")
      .riga(" GROUP BY CTE_NUMERATE.BU65_ID, CTE_NUMERATE.GRUPPO ")
      .riga(") ");
}

void groups(TestoSql& sql, const Reading& reading) {
  sql.riga(" SELECT CTE_GRUPPI.GRUPPO, NULL AS VOCE, 0 AS PERIODO, NULL AS VALORE, NULL AS CONSUNTIVO ");
  for (std::size_t i = 0; i < reading.axes.size(); ++i) sql.riga("      , CTE_SCHEDE.", axisName(i));
  sql.riga("      , CTE_SCHEDE.GENERE ")
      .riga(" FROM   CTE_GRUPPI ")
      .riga(" INNER JOIN CTE_SCHEDE ON CTE_SCHEDE.BU65_ID = CTE_GRUPPI.GRUPPO ");
}

/// The select list of a kind of details, its sums last.
void kindColumns(TestoSql& sql, const Reading& reading, std::string_view details, int kind, const std::string& value,
                 const std::string& actual) {
  sql.riga(" UNION ALL ")
      .riga(" SELECT GRUPPO, ", numero(kind), ", ", reading.byPeriod ? std::string(details) + ".BU66_PERIODO" : "0")
      .riga("      , ", value)
      .riga("      , ", actual);
  for (std::size_t i = 0; i <= reading.axes.size(); ++i) sql.riga("      , NULL ");
}

void grouped(TestoSql& sql, const Reading& reading, std::string_view details) {
  sql.testo(" GROUP BY GRUPPO");
  if (reading.byPeriod) sql.testo(", ", details, ".BU66_PERIODO");
  sql.riga(" ");
}

std::string sum(std::string_view details, std::string_view column) {
  return "SUM(" + std::string(details).append(".").append(column) + ")";
}

void budgetOrActual(TestoSql& sql, const Reading& reading, int kind) {
  kindColumns(sql, reading, "BU66_VALORI", kind, sum("BU66_VALORI", reading.measure), "NULL");
  detailsOfCards(sql, reading, "BU66_VALORI", kind);
  grouped(sql, reading, "BU66_VALORI");
}

void orders(TestoSql& sql, const Reading& reading) {
  kindColumns(sql, reading, "BU66_ORDINI", bdgDettaglioOrdini, sum("BU66_ORDINI", reading.measure), "NULL");
  sql.riga(" FROM   CTE_ULTIMI ")
      .riga(" INNER JOIN BU66_DETBUDGET AS BU66_ORDINI WITH (NOLOCK) ON BU66_ORDINI.BU66_ID = CTE_ULTIMI.ID ");
  grouped(sql, reading, "BU66_ORDINI");
}

/// A forecast takes, period by period, the actual value where there is one: the two parts of the grid's sum.
void forecast(TestoSql& sql, const Reading& reading, int number) {
  const int kind = bdgDettaglioOrdini + number;
  const std::string column(reading.measure);
  kindColumns(sql, reading, "BU66_FORECAST", kind,
              "SUM(CASE WHEN BU66_CONS." + column + " IS NULL THEN BU66_FORECAST." + column + " END)",
              sum("BU66_CONS", reading.measure));
  detailsOfCards(sql, reading, "BU66_FORECAST", kind);
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
  groups(sql, reading);
  if (reading.budgetOrActual)
    for (const int kind : {bdgDettaglioBudget, bdgDettaglioConsuntivo}) budgetOrActual(sql, reading, kind);
  if (reading.orders) orders(sql, reading);
  for (const int number : reading.forecasts) forecast(sql, reading, number);
  return sql.str();
}

}  // namespace bukorval::report
