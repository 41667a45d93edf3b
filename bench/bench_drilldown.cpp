// The movements behind one cell of a card, in a ledger of 1,000,000 lines, against the raw engine stepping the
// statement that fetches them.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "FileDatabase.h"
#include "Ledger.h"
#include "Recorder.h"
#include "Replay.h"
#include "Timing.h"
#include "dati/DrillDown.h"
#include "suite/Sessione.h"
#include "suite/Suite.h"

namespace {

using bench::seconds;

constexpr int kLines = 1000000;

class Bench {
 public:
  Bench(int linesPerCard, int dateKind) {
    auto& connection = *database_.connection;
    connection.Execute(
        "INSERT INTO CG19_ANADITTAESER (CG19_DITTA_CG18, CG19_ANNO, CG19_PROGESER, CG19_DATAINIZIO, CG19_DATAFINE)"
        " VALUES (1, 2011, 1, '20110101', '20111231')");
    connection.Execute(
        "INSERT INTO BU01_ANABUDGET (BU01_INDTIPO, BU01_SOTTOTIPO, BU01_STRUTTURA) VALUES (4, '01', N'CON')");
    bench::fillLedger(database_.raw.get(), kLines, linesPerCard);
    object_.ActiveInterface = std::make_shared<suite::Sessione>(database_.connection);
    object_.Connessione(database_.connection);
    object_.CodiceDitta = 1;
    object_.TipoBudget = 4;
    object_.SottoTipoBudget = "01";
    object_.AnnoEsercizio = object_.AnnoEsercizioMovimenti = 2011;
    object_.ProgressivoEsercizio = object_.ProgressivoEsercizioMovimenti = 1;
    object_.BdgTipoScheda = 0;
    object_.TipoDettaglioDestinazione = 1;
    object_.TipoDataMovimenti = dateKind;
    object_.TipoMovimenti = "CG41_INDTIPOMOV = 0";
    scope_.ranges.emplace_back(values::Date::FromYmd(2011, 1, 1), values::Date::FromYmd(2011, 12, 31));
    // The first cell that has lines.
    scope_.period = 1;
    while (drillDown() == 0) ++*scope_.period;
    bench::Recorder recorder(database_.connection);
    drillDown(recorder);
    std::vector<std::string> ofMovements;
    for (auto& text : recorder.texts)
      if (text.find("CG42_MOVCONT") != std::string::npos) ofMovements.push_back(std::move(text));
    engine_ = std::make_unique<bench::Replay>(database_.raw.get(), std::move(ofMovements));
  }

  std::size_t drillDown(ado::Connection& connection) {
    const auto card = bukorval::dati::findElaboratedCard(connection, 1);
    if (!card) throw std::runtime_error("no card");
    return bukorval::dati::drillDown(object_, connection, *card, scope_).movements.size();
  }
  std::size_t drillDown() { return drillDown(*database_.connection); }
  void engine() { engine_->run(); }

 private:
  bench::FileDatabase database_{"bench_drilldown"};
  bukorval::CLSKORVAL object_;
  bukorval::dati::DrillScope scope_;
  std::unique_ptr<bench::Replay> engine_;
};

/// Each iteration times both ways once, in turn, so that a machine that slows down slows them alike.
void drillDown(benchmark::State& state) {
  Bench bench(static_cast<int>(state.range(1)), static_cast<int>(state.range(0)));
  std::size_t shown = bench.drillDown();
  bench.engine();
  double drill = 0, engine = 0;
  for (auto _ : state) {
    const double once = seconds([&] { shown = bench.drillDown(); });
    drill += once;
    engine += seconds([&] { bench.engine(); });
    state.SetIterationTime(once);
  }
  state.counters["shown"] = static_cast<double>(shown);
  state.counters["drill-down/engine"] = drill / engine;
}
BENCHMARK(drillDown)
    ->ArgNames({"competence", "lines of the account"})
    ->ArgsProduct({{0, 1}, {500, 50000}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(10);

}  // namespace

int main(int argc, char** argv) {
  suite::registraServiziSuite();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
