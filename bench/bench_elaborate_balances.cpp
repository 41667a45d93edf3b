// The economic elaboration: a quarterly budget from 12 months of balances with a deviation per account, populated and
// written. The same statements are then stepped by the raw engine, which is the engine's share.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include "FileDatabase.h"
#include "Recorder.h"
#include "Replay.h"
#include "Timing.h"
#include "object/CLSKORVAL.h"
#include "suite/Sessione.h"
#include "suite/Suite.h"

namespace {

using bench::seconds;
using sqlite::prepare;
using sqlite::run;
using sqlite::SqliteConnection;
using values::Date;

constexpr int kMonths = 12;
constexpr int kLinesPerRegistration = 20;

/// One line an account and month; every account has its place in the chart, every tenth a percentage of its group.
void fill(sqlite3* database, int accounts) {
  const auto series = [](int last) {
    return "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 < " + std::to_string(last) +
           ") ";
  };
  const std::string account = "printf('6%03d%04d', i / 100, i % 100 + 1)";
  const std::string lines = std::to_string(kLinesPerRegistration);
  run(database, "BEGIN");
  run(database, (series(accounts) +
                 "INSERT INTO CG24_TABPDC (CG24_GRUPPO_CG10, CG24_CONTO, CG24_DESCR, CG24_INDTIPOCONTO)"
                 " SELECT 1, " +
                 account + ", 'Conto ' || i, 2 FROM n")
                    .c_str());
  run(database, (series(accounts * kMonths / kLinesPerRegistration) +
                 "INSERT INTO CG41_PRIMANOTA (CG41_DITTA_CG18, CG41_NUMREG,"
                 " CG41_DATAREG, CG41_ANNO_CG19, CG41_PROGESER_CG19, CG41_INDPROVREG) SELECT 1, i + 1, 20110015000000 +"
                 " (i % 12 + 1) * 100000000, 2011, 1, 0 FROM n")
                    .c_str());
  // Registration r is of month r % 12: its lines take the accounts of one block of 20.
  run(database,
      (series(accounts * kMonths) + ", l(r, k) AS (SELECT i / " + lines + ", i % " + lines +
       " FROM n) INSERT INTO"
       " CG42_MOVCONT (CG42_DITTA_CG18, CG42_NUMREG_CG41, CG42_NUMRIGACONT, CG42_GRUPPO_CG10, CG42_CONTOPAR_CG24,"
       " CG42_INDDAAV, CG42_IMPTOTALE) SELECT 1, r + 1, k + 1, 1, printf('6%03d%04d', (r / 12 * " +
       lines + " + k) / 100, (r / 12 * " + lines +
       " + k) % 100 + 1), 1 + (k % 9 = 0), (r * 7919 + k * 31) % 1000000 + 1 FROM l")
          .c_str());
  run(database, "COMMIT");
}

/// Percentages of account groups only: the walk up the tree finds them.
ado::RecordsetPtr deviations(int accounts) {
  auto rst = std::make_shared<ado::Recordset>();
  for (const char* field : {"CONTO", "FLGPERIODI", "PERCSCOST"})
    rst->Fields().Append(field, ado::adVariant, 0, ado::adFldIsNullable);
  rst->Open();
  for (int group = 0; group < accounts / 100; group += 2) {
    char account[16];
    std::snprintf(account, sizeof account, "6%03d0000", group);
    rst->AddNew();
    (*rst)["CONTO"].Value(account);
    (*rst)["FLGPERIODI"].Value(0);
    (*rst)["PERCSCOST"].Value(5);
    rst->Update();
  }
  return rst;
}

class Bench {
 public:
  explicit Bench(int accounts) : accounts_(accounts) {
    for (const char* year : {"2011", "2012"})
      connection_->Execute(std::string("INSERT INTO CG19_ANADITTAESER (CG19_DITTA_CG18, CG19_ANNO, CG19_PROGESER,"
                                       " CG19_DATAINIZIO, CG19_DATAFINE) VALUES (1, ") +
                           year + ", 1, '" + year + "0101', '" + year + "1231')");
    connection_->Execute(
        "INSERT INTO BU01_ANABUDGET (BU01_INDTIPO, BU01_SOTTOTIPO, BU01_STRUTTURA, BU01_INDPERIODO)"
        " VALUES (5, '01', N'CON', 2)");
    fill(raw_, accounts);
    prepareObject();
  }
  void populate() {
    object_.BdgElaEco_PopolaRstSaldiElaEco();
    check();
    if (object_.RstSaldiElaEco->RecordCount() != 4 * accounts_) throw std::runtime_error("rows are missing");
  }
  void write() {
    object_.BdgElaEco_ScriviBudget_DaRstSaldiElaEco();
    check();
  }

  /// What one run of the object sends, ready to be stepped by the engine alone.
  std::unique_ptr<bench::Replay> record(const auto& work) {
    const auto recorder = std::make_shared<bench::Recorder>(connection_);
    object_.Connessione(recorder);
    work();
    object_.Connessione(connection_);
    return std::make_unique<bench::Replay>(raw_, std::move(recorder->texts));
  }

  /// No cards, and identities from 1 again, so that a replayed write finds the cards under the recorded numbers.
  void emptyBudget() {
    for (const char* table : {"BU66_DETBUDGET", "BU67_BDGCASHFLOW", "BU65_TESBUDGET", "sqlite_sequence"})
      run(raw_, (std::string("DELETE FROM ") + table).c_str());
  }
  long amounts() {
    const auto count = prepare(raw_, "SELECT COUNT(BU66_IMPORTO) FROM BU66_DETBUDGET");
    return sqlite3_step(count.get()) == SQLITE_ROW ? static_cast<long>(sqlite3_column_int64(count.get(), 0)) : 0;
  }

 private:
  void prepareObject() {
    object_.ActiveInterface = std::make_shared<suite::Sessione>(connection_);
    object_.Connessione(connection_);
    object_.CodiceDitta = object_.CodicePdcCoGeDitta = 1;
    object_.TipoBudget = 5;
    object_.SottoTipoBudget = "01";
    object_.AnnoEsercizio = 2012;
    object_.AnnoEsercizioMovimenti = 2011;
    object_.ProgressivoEsercizio = object_.ProgressivoEsercizioMovimenti = 1;
    object_.TipoDettaglioDestinazione = 0;
    object_.TipoMovimenti = "1 = 1";
    object_.DaData = Date::FromYmd(2011, 1, 1);
    object_.AData = Date::FromYmd(2011, 12, 31);
    object_.TipoScostamento = bukorval::bdgScostamentoPerConto;
    object_.RstScostPerConto = deviations(accounts_);
  }
  void check() const {
    if (object_.Stato() != 0) throw std::runtime_error(object_.errore());
  }
  int accounts_;
  bench::FileDatabase database_{"bench_balances"};
  std::shared_ptr<SqliteConnection> connection_ = database_.connection;
  sqlite3* raw_ = database_.raw.get();
  bukorval::CLSKORVAL object_;
};

/// Adds the figures of one benchmark and compares its times across sizes.
void report(benchmark::State& state, std::map<long, double>& times, double object, double engine) {
  const auto accounts = state.range(0);
  times[accounts] = object / static_cast<double>(state.iterations());
  state.counters["object/engine"] = object / engine;
  state.counters["engine share %"] = 100 * engine / object;
  if (times.size() > 1) state.counters["exponent"] = bench::growthExponent(times, accounts);
}

void populate(benchmark::State& state) {
  static std::map<long, double> times;
  Bench bench(static_cast<int>(state.range(0)));
  // The cards hold amounts already, as when a budget is proposed again: every row is looked up among them.
  bench.populate();
  bench.write();
  const auto replay = bench.record([&] { bench.populate(); });
  double object = 0, engine = 0;
  for (auto _ : state) {
    const double once = seconds([&] { bench.populate(); });
    object += once;
    engine += seconds([&] { replay->run(); });
    state.SetIterationTime(once);
  }
  report(state, times, object, engine);
}

void write(benchmark::State& state) {
  static std::map<long, double> times;
  Bench bench(static_cast<int>(state.range(0)));
  bench.populate();
  const auto replay = bench.record([&] { bench.write(); });
  const long written = bench.amounts();
  double object = 0, engine = 0;
  for (auto _ : state) {
    bench.emptyBudget();
    engine += seconds([&] { replay->run(); });
    if (bench.amounts() != written) throw std::runtime_error("the engine wrote something else");
    bench.emptyBudget();
    const double once = seconds([&] { bench.write(); });
    object += once;
    state.SetIterationTime(once);
  }
  report(state, times, object, engine);
}

BENCHMARK(populate)
    ->ArgName("accounts")
    ->Arg(1000)
    ->Arg(2000)
    ->Arg(5000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);
BENCHMARK(write)
    ->ArgName("accounts")
    ->Arg(1000)
    ->Arg(2000)
    ->Arg(5000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

}  // namespace

int main(int argc, char** argv) {
  suite::registraServiziSuite();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
