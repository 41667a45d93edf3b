// RecordSetBudget against the raw engine: the same statement stepped without record sets, and one pass written by
// hand over the same rows. 60 details a card: 12 periods of budget, actuals, orders and two forecasts.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <cstdio>
#include <filesystem>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>

#include "Timing.h"
#include "ado/sqlite/Binder.h"
#include "ado/sqlite/FunctionRegistry.h"
#include "ado/sqlite/Handle.h"
#include "ado/sqlite/Provider.h"
#include "ado/sqlite/SchemaCatalog.h"
#include "ado/sqlite/dialect/Translate.h"
#include "object/CLSKORVAL.h"
#include "schema/Schema.h"
#include "suite/Sessione.h"
#include "suite/Suite.h"

namespace {

using namespace ado::sqlite;
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
                 " SELECT 1, 3, '01', 2011, 1, 0, printf('C%06d', i) FROM n").c_str());
  run(database,
      ("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 < " + count +
       " * 60) INSERT INTO BU66_DETBUDGET (BU66_ID_BU65, BU66_TIPO, BU66_PERIODO, BU66_IMPORTO, BU66_QTA1, BU66_QTA2)"
       " SELECT i / 60 + 1, i % 60 / 12, i % 12 + 1,"
       " CASE WHEN i % 60 / 12 = 1 AND i % 12 > 8 THEN NULL ELSE (i * 7919) % 1000000 END,"
       " (i * 31) % 100000, NULL FROM n")
          .c_str());
  run(database, "COMMIT");
}

/// One database with its object, its own raw handle and the translated statement.
class Bench {
 public:
  explicit Bench(int cards)
      : file_(std::filesystem::temp_directory_path() / ("bench_grid_" + std::to_string(cards) + ".db")) {
    remove();
    connection_ = ado::createConnection();
    connection_->ConnectionString = "Provider=SQLite;Create=True;Data Source=" + file_.string();
    connection_->Open();
    schema::create(*connection_);
    connection_->Execute(
        "INSERT INTO CG18_ANADITTE (CG18_CODICE, CG18_RAGSOC, CG18_GRUPPO_CG10) VALUES (1, N'Prova', 1)");
    connection_->Execute(
        "INSERT INTO BU01_ANABUDGET (BU01_INDTIPO, BU01_SOTTOTIPO, BU01_STRUTTURA, BU01_NUMFORECAST)"
        " VALUES (3, '01', N'SCH', 2)");
    sqlite3* raw = nullptr;
    if (sqlite3_open(file_.string().c_str(), &raw) != SQLITE_OK) throw std::runtime_error("cannot open");
    raw_.reset(raw);
    registerFunctions(raw);
    run(raw, "PRAGMA temp_store = MEMORY");
    run(raw, "PRAGMA cache_size = -65536");
    fill(raw, cards);
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
  ~Bench() {
    object_.Connessione(nullptr);
    connection_->Close();
    raw_.reset();
    remove();
  }

  long object() {
    const auto grid = object_.RecordSetBudget();
    if (!grid) throw std::runtime_error(object_.errore());
    return grid->RecordCount();
  }

  /// The translated steps, bound and stepped; every column of every row is read and dropped.
  long engine() {
    run(raw_.get(), "BEGIN");
    for (const auto& statement : translation_.prepare) step(statement);
    const long rows = step(translation_.main);
    for (const auto& statement : translation_.cleanup) step(statement);
    run(raw_.get(), "COMMIT");
    return rows;
  }

  long text(const char* sql) { return step({sql, {}}); }

 private:
  /// Catches the text that the object sends.
  class Listener : public ado::Connection {
   public:
    explicit Listener(ado::ConnectionPtr real) : real_(std::move(real)) {}
    std::string last;
    void Open(std::string_view = {}, std::string_view = {}, std::int32_t = -1) override {}
    void Close() override {}
    ado::ObjectStateEnum State() const override { return real_->State(); }
    ado::RecordsetPtr Execute(std::string_view text) override {
      last = text;
      return real_->Execute(text);
    }
    void BeginTrans() override { real_->BeginTrans(); }
    void CommitTrans() override { real_->CommitTrans(); }
    void RollbackTrans() override { real_->RollbackTrans(); }

   private:
    ado::ConnectionPtr real_;
  };

  void translateStatement() {
    const auto listener = std::make_shared<Listener>(connection_);
    object_.Connessione(listener);
    object();
    object_.Connessione(connection_);
    const SchemaCatalog catalog(raw_.get());
    text_ = listener->last;
    scan_ = dialect::scan(text_);
    translation_ = dialect::translate(scan_, catalog, "raw_");
    for (const auto& statement : translation_.setup) run(raw_.get(), statement.sql.c_str());
  }

  long step(const dialect::Statement& statement) {
    auto& prepared = prepared_[statement.sql];
    if (!prepared) prepared = prepare(raw_.get(), statement.sql);
    const ResetAtEnd reset(prepared.get());
    bindLiterals(prepared.get(), statement.bindings, scan_.literals);
    long rows = 0;
    while (sqlite3_step(prepared.get()) == SQLITE_ROW) {
      ++rows;
      for (int i = 0; i < sqlite3_column_count(prepared.get()); ++i)
        benchmark::DoNotOptimize(sqlite3_column_type(prepared.get(), i) == SQLITE_TEXT
                                     ? static_cast<sqlite3_int64>(sqlite3_column_bytes(prepared.get(), i))
                                     : sqlite3_column_int64(prepared.get(), i));
    }
    return rows;
  }

  void remove() const {
    for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(file_.string() + suffix);
  }

  std::filesystem::path file_;
  ado::ConnectionPtr connection_;
  Database raw_;
  std::map<std::string, Prepared> prepared_;
  std::shared_ptr<suite::Sessione> session_;
  bukorval::CLSKORVAL object_;
  std::string text_;
  dialect::Scan scan_;
  dialect::Translation translation_;
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
  ado::sqlite::registerSqlite();
  suite::registraServiziSuite();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
