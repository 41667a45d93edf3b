// A report of two row axes and months against one statement of the engine that adds up the same. 60 details a card: 12
// periods of budget, actuals, orders and two forecasts.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Details.h"
#include "FileDatabase.h"
#include "Timing.h"
#include "report/Report.h"
#include "suite/Sessione.h"
#include "suite/Suite.h"

namespace {

using namespace sqlite;
using bench::seconds;

/// Budget and actuals by site, account, card kind and month.
constexpr const char* kSums = R"(
SELECT BU65_CODICE_CG31, BU65_CONTO_CG24, BU65_INDCOSRIC_BU07, BU66_PERIODO,
       SUM(CASE BU66_TIPO WHEN 0 THEN BU66_IMPORTO END), SUM(CASE BU66_TIPO WHEN 1 THEN BU66_IMPORTO END)
FROM BU65_TESBUDGET
CROSS JOIN BU66_DETBUDGET INDEXED BY IX_BU66_TOTALI ON BU66_ID_BU65 = BU65_ID AND BU66_TIPO IN (0, 1)
WHERE BU65_DITTA_CG18 = 1 AND BU65_INDTIPO_BU01 = 4 AND BU65_SOTTOTIPO_BU01 = '01' AND BU65_ANNO = 2011
  AND BU65_PROGESER = 1
GROUP BY BU65_CODICE_CG31, BU65_CONTO_CG24, BU65_INDCOSRIC_BU07, BU66_PERIODO)";

/// The same with the latest orders and a forecast in which actuals replace the forecast of their period.
constexpr const char* kAll = R"(
SELECT BU65_CODICE_CG31, BU65_CONTO_CG24, BU65_INDCOSRIC_BU07, d.BU66_PERIODO,
       SUM(CASE d.BU66_TIPO WHEN 0 THEN d.BU66_IMPORTO END), SUM(CASE d.BU66_TIPO WHEN 1 THEN d.BU66_IMPORTO END),
       SUM(CASE WHEN d.BU66_TIPO = 2 AND d.BU66_ID = (SELECT MAX(BU66_ID) FROM BU66_DETBUDGET o
           WHERE o.BU66_TIPO = 2 AND o.BU66_ID_BU65 = d.BU66_ID_BU65 AND o.BU66_IMPORTO IS NOT NULL)
           THEN d.BU66_IMPORTO END),
       SUM(CASE d.BU66_TIPO WHEN 3 THEN ifnull(c.BU66_IMPORTO, d.BU66_IMPORTO) END)
FROM BU65_TESBUDGET
CROSS JOIN BU66_DETBUDGET d INDEXED BY IX_BU66_TOTALI ON d.BU66_ID_BU65 = BU65_ID AND d.BU66_TIPO IN (0, 1, 2, 3)
LEFT JOIN BU66_DETBUDGET c ON d.BU66_TIPO = 3 AND c.BU66_ID_BU65 = d.BU66_ID_BU65 AND c.BU66_TIPO = 1
  AND c.BU66_PERIODO = d.BU66_PERIODO
WHERE BU65_DITTA_CG18 = 1 AND BU65_INDTIPO_BU01 = 4 AND BU65_SOTTOTIPO_BU01 = '01' AND BU65_ANNO = 2011
  AND BU65_PROGESER = 1
GROUP BY BU65_CODICE_CG31, BU65_CONTO_CG24, BU65_INDCOSRIC_BU07, d.BU66_PERIODO)";

/// 10 sites, 500 accounts.
void fill(sqlite3* database, long cards) {
  const std::string count = std::to_string(cards);
  run(database, "BEGIN");
  run(database, ("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " + count +
                 ") INSERT INTO BU65_TESBUDGET (BU65_DITTA_CG18, BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_ANNO,"
                 " BU65_PROGESER, BU65_INDCOSRIC_BU07, BU65_SCHEDA_BU07, BU65_CODICE_CG31, BU65_GRUPPO_CG10,"
                 " BU65_CONTO_CG24) SELECT 1, 4, '01', 2011, 1, i % 2, printf('C%06d', i), i * 7 % 10 + 1, 1,"
                 " printf('%08d', 60000000 + i * 7919 % 1000 / 2 * 10) FROM n")
                    .c_str());
  bench::fillDetails(database, cards);
  run(database, "COMMIT");
}

struct Bench {
  explicit Bench(long cards) {
    database.connection->Execute(
        "INSERT INTO BU01_ANABUDGET (BU01_INDTIPO, BU01_SOTTOTIPO, BU01_STRUTTURA, BU01_FLGSEDI, BU01_NUMFORECAST)"
        " VALUES (4, '01', N'CON', 1, 2)");
    database.connection->Execute(
        "INSERT INTO CG19_ANADITTAESER (CG19_DITTA_CG18, CG19_ANNO, CG19_PROGESER, CG19_DATAINIZIO, CG19_DATAFINE)"
        " VALUES (1, 2011, 1, '20110101', '20111231')");
    fill(database.raw.get(), cards);
    object.ActiveInterface = std::make_shared<suite::Sessione>(database.connection);
    object.Connessione(database.connection);
    object.CodiceDitta = 1;
    object.TipoBudget = 4;
    object.SottoTipoBudget = "01";
    object.AnnoEsercizio = 2011;
    object.ProgressivoEsercizio = 1;
  }
  std::size_t report(const std::vector<std::string>& values) {
    bukorval::report::Query query;
    query.rows = {"site", "account"};
    query.columns = "month";
    query.values = values;
    return bukorval::report::run(object, *database.connection, query).rows.size();
  }
  long engine(const char* sql) {
    const auto statement = prepare(database.raw.get(), sql);
    return bench::stepAll(database.raw.get(), statement.get());
  }

  bench::FileDatabase database{"bench_report"};
  bukorval::CLSKORVAL object;
};

std::map<long, double> reportSeconds;

/// Each iteration times both ways once, in turn, so that a machine that slows down slows them alike.
void compare(benchmark::State& state, const std::vector<std::string>& values, const char* sql) {
  const auto cards = state.range(0);
  Bench bench(cards);
  if (bench.report(values) < 2 || bench.engine(sql) == 0) return state.SkipWithError("no rows");
  double report = 0, engine = 0;
  for (auto _ : state) {
    const double once = seconds([&] { bench.report(values); });
    report += once;
    engine += seconds([&] { bench.engine(sql); });
    state.SetIterationTime(once);
  }
  state.counters["report/engine"] = report / engine;
  reportSeconds[cards] = report / static_cast<double>(state.iterations());
  if (reportSeconds.size() > 1) state.counters["exponent"] = bench::growthExponent(reportSeconds, cards);
}

void budgetAndActuals(benchmark::State& state) { compare(state, {"budget", "actual", "delta", "delta%"}, kSums); }
void everyValue(benchmark::State& state) {
  compare(state, {"budget", "actual", "delta", "delta%", "orders", "available", "forecast1"}, kAll);
}
BENCHMARK(budgetAndActuals)->Arg(5000)->Arg(50000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(everyValue)->Arg(5000)->Arg(50000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

int main(int argc, char** argv) {
  suite::registraServiziSuite();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
