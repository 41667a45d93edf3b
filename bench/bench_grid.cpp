// RecordSetBudget against the raw engine: the same statement stepped without record sets, and one pass written by
// hand over the same rows. 60 details a card: 12 periods of budget, actuals, orders and two forecasts.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <cstdio>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>

#include "Details.h"
#include "FileDatabase.h"
#include "Recorder.h"
#include "Timing.h"
#include "object/CLSKORVAL.h"
#include "sqlite/Binder.h"
#include "sqlite/SchemaCatalog.h"
#include "sqlite/emitter/Translate.h"
#include "suite/Sessione.h"
#include "suite/Suite.h"

namespace {

using namespace sqlite;
using bench::seconds;

/// One pass over the details, card by card and period by period; orders count by their latest row.
constexpr const char* kByHand = R"(
SELECT BU65_ID, BU65_DITTA_CG18, BU65_SCHEDA_BU07, t.* FROM BU65_TESBUDGET LEFT JOIN (
  SELECT BU66_ID_BU65 AS ID,
         SUM(b0), SUM(b1), SUM(b2), SUM(c0), SUM(c1), SUM(c2), MAX(o0), MAX(o1), MAX(o2),
         SUM(CASE WHEN f THEN ifnull(c0, f0) END), SUM(CASE WHEN f THEN ifnull(c1, f1) END),
         SUM(CASE WHEN f THEN ifnull(c2, f2) END), SUM(CASE WHEN g THEN ifnull(c0, g0) END),
         SUM(CASE WHEN g THEN ifnull(c1, g1) END), SUM(CASE WHEN g THEN ifnull(c2, g2) END)
  FROM (SELECT BU66_ID_BU65,
               SUM(CASE BU66_TIPO WHEN 0 THEN BU66_IMPORTO END) AS b0, SUM(CASE BU66_TIPO WHEN 0 THEN BU66_QTA1 END) AS b1,
               SUM(CASE BU66_TIPO WHEN 0 THEN BU66_QTA2 END) AS b2,
               SUM(CASE BU66_TIPO WHEN 1 THEN BU66_IMPORTO END) AS c0, SUM(CASE BU66_TIPO WHEN 1 THEN BU66_QTA1 END) AS c1,
               SUM(CASE BU66_TIPO WHEN 1 THEN BU66_QTA2 END) AS c2,
               MAX(CASE BU66_TIPO WHEN 2 THEN BU66_ID * 1000000000 + BU66_IMPORTO END) AS o0,
               MAX(CASE BU66_TIPO WHEN 2 THEN BU66_ID * 1000000000 + BU66_QTA1 END) AS o1,
               MAX(CASE BU66_TIPO WHEN 2 THEN BU66_ID * 1000000000 + BU66_QTA2 END) AS o2,
               SUM(CASE BU66_TIPO WHEN 3 THEN BU66_IMPORTO END) AS f0, SUM(CASE BU66_TIPO WHEN 3 THEN BU66_QTA1 END) AS f1,
               SUM(CASE BU66_TIPO WHEN 3 THEN BU66_QTA2 END) AS f2, MAX(BU66_TIPO = 3) AS f,
               SUM(CASE BU66_TIPO WHEN 4 THEN BU66_IMPORTO END) AS g0, SUM(CASE BU66_TIPO WHEN 4 THEN BU66_QTA1 END) AS g1,
               SUM(CASE BU66_TIPO WHEN 4 THEN BU66_QTA2 END) AS g2, MAX(BU66_TIPO = 4) AS g
        FROM BU66_DETBUDGET GROUP BY BU66_ID_BU65, BU66_PERIODO)
  GROUP BY BU66_ID_BU65) t ON t.ID = BU65_ID
ORDER BY BU65_SCHEDA_BU07)";

/// The totals of the kinds alone, without forecasts that mix in actuals and without the latest order: what a pass
/// costs that needs no periods.
constexpr const char* kSumsOnly = R"(
SELECT BU65_ID, BU65_DITTA_CG18, BU65_SCHEDA_BU07, t.* FROM BU65_TESBUDGET LEFT JOIN (
  SELECT BU66_ID_BU65 AS ID,
         SUM(CASE BU66_TIPO WHEN 0 THEN BU66_IMPORTO END), SUM(CASE BU66_TIPO WHEN 0 THEN BU66_QTA1 END),
         SUM(CASE BU66_TIPO WHEN 0 THEN BU66_QTA2 END), SUM(CASE BU66_TIPO WHEN 1 THEN BU66_IMPORTO END),
         SUM(CASE BU66_TIPO WHEN 1 THEN BU66_QTA1 END), SUM(CASE BU66_TIPO WHEN 1 THEN BU66_QTA2 END),
         SUM(CASE BU66_TIPO WHEN 2 THEN BU66_IMPORTO END), SUM(CASE BU66_TIPO WHEN 2 THEN BU66_QTA1 END),
         SUM(CASE BU66_TIPO WHEN 2 THEN BU66_QTA2 END), SUM(CASE BU66_TIPO WHEN 3 THEN BU66_IMPORTO END),
         SUM(CASE BU66_TIPO WHEN 3 THEN BU66_QTA1 END), SUM(CASE BU66_TIPO WHEN 3 THEN BU66_QTA2 END),
         SUM(CASE BU66_TIPO WHEN 4 THEN BU66_IMPORTO END), SUM(CASE BU66_TIPO WHEN 4 THEN BU66_QTA1 END),
         SUM(CASE BU66_TIPO WHEN 4 THEN BU66_QTA2 END)
  FROM BU66_DETBUDGET GROUP BY BU66_ID_BU65) t ON t.ID = BU65_ID
ORDER BY BU65_SCHEDA_BU07)";

void fill(sqlite3* database, int cards) {
  const std::string count = std::to_string(cards);
  run(database, "BEGIN");
  run(database, ("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " + count +
                 ") INSERT INTO BU65_TESBUDGET (BU65_DITTA_CG18, BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_ANNO,"
                 " BU65_PROGESER, BU65_INDCOSRIC_BU07, BU65_SCHEDA_BU07)"
                 " SELECT 1, 3, '01', 2011, 1, 0, printf('C%06d', i) FROM n")
                    .c_str());
  bench::fillDetails(database, cards);
  run(database, "COMMIT");
}

/// One database with its object, its own raw handle and the translated statement.
class Bench {
 public:
  explicit Bench(int cards) {
    connection_->Execute(
        "INSERT INTO BU01_ANABUDGET (BU01_INDTIPO, BU01_SOTTOTIPO, BU01_STRUTTURA, BU01_NUMFORECAST)"
        " VALUES (3, '01', N'SCH', 2)");
    fill(raw_, cards);
    session_ = std::make_shared<suite::Sessione>(connection_);
    object_.ActiveInterface = session_;
    object_.Connessione(connection_);
    object_.CodiceDitta = 1;
    object_.TipoBudget = 3;
    object_.SottoTipoBudget = "01";
    object_.AnnoEsercizio = 2011;
    object_.ProgressivoEsercizio = 1;
    translateStatement();
  }
  long object() {
    const auto grid = object_.RecordSetBudget();
    if (!grid) throw std::runtime_error(object_.errore());
    return grid->RecordCount();
  }

  /// The translated steps, bound and stepped; every column of every row is read and dropped.
  long engine() {
    run(raw_, "BEGIN");
    for (const auto& statement : translation_.prepare) step(statement);
    const long rows = step(translation_.main);
    for (const auto& statement : translation_.cleanup) step(statement);
    run(raw_, "COMMIT");
    return rows;
  }

  long text(const char* sql) { return step({sql, {}}); }

 private:
  void translateStatement() {
    const auto recorder = std::make_shared<bench::Recorder>(connection_);
    object_.Connessione(recorder);
    object();
    object_.Connessione(connection_);
    const SchemaCatalog catalog(raw_);
    text_ = recorder->texts.back();
    scan_ = tsql::scan(text_);
    translation_ = translate(scan_, catalog, "raw_");
    for (const auto& statement : translation_.setup) run(raw_, statement.sql.c_str());
  }

  long step(const StepText& statement) {
    auto& prepared = prepared_[statement.sql];
    if (!prepared) prepared = prepare(raw_, statement.sql);
    bindLiterals(prepared.get(), statement.bindings, scan_.literals);
    return bench::stepAll(raw_, prepared.get());
  }

  bench::FileDatabase database_{"bench_grid"};
  ado::ConnectionPtr connection_ = database_.connection;
  sqlite3* raw_ = database_.raw.get();
  std::map<std::string, Prepared> prepared_;
  std::shared_ptr<suite::Sessione> session_;
  bukorval::CLSKORVAL object_;
  std::string text_;
  tsql::Scan scan_;
  Translation translation_;
};

std::map<long, double> engineSeconds;

/// Each iteration times every way once, in turn, so that a machine that slows down slows them alike.
void grid(benchmark::State& state) {
  const int cards = static_cast<int>(state.range(0));
  Bench bench(cards);
  if (bench.object() != cards || bench.engine() != cards || bench.text(kByHand) != cards) {
    state.SkipWithError("the ways do not give the same number of cards");
    return;
  }
  double object = 0, engine = 0, hand = 0, sums = 0;
  for (auto _ : state) {
    const double once = seconds([&] { bench.object(); });
    object += once;
    engine += seconds([&] { bench.engine(); });
    hand += seconds([&] { bench.text(kByHand); });
    sums += seconds([&] { bench.text(kSumsOnly); });
    state.SetIterationTime(once);
  }
  const auto runs = static_cast<double>(state.iterations());
  engineSeconds[cards] = engine / runs;
  state.counters["object/engine"] = object / engine;
  state.counters["engine/by_hand"] = engine / hand;
  state.counters["engine/sums_only"] = engine / sums;
  if (engineSeconds.size() > 1) state.counters["exponent"] = bench::growthExponent(engineSeconds, cards);
}
BENCHMARK(grid)->Arg(1000)->Arg(10000)->Arg(50000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace

int main(int argc, char** argv) {
  suite::registraServiziSuite();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
