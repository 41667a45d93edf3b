// The card elaboration against the raw engine fetching the same movements with the same prepared query, card by card.
// 500 movement lines a card; one line in two has a competence interval of up to three months.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "FileDatabase.h"
#include "Ledger.h"
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

constexpr int kLinesPerCard = 500;

class Bench {
 public:
  Bench(int lines, int dateKind) : cards_(lines / kLinesPerCard) {
    connection_->Execute(
        "INSERT INTO CG19_ANADITTAESER (CG19_DITTA_CG18, CG19_ANNO, CG19_PROGESER, CG19_DATAINIZIO, CG19_DATAFINE)"
        " VALUES (1, 2011, 1, '20110101', '20111231')");
    connection_->Execute(
        "INSERT INTO BU01_ANABUDGET (BU01_INDTIPO, BU01_SOTTOTIPO, BU01_STRUTTURA) VALUES (4, '01', N'CON')");
    bench::fillLedger(raw_, lines, kLinesPerCard);
    object_.ActiveInterface = std::make_shared<suite::Sessione>(connection_);
    object_.CodiceDitta = 1;
    object_.TipoBudget = 4;
    object_.SottoTipoBudget = "01";
    object_.AnnoEsercizio = object_.AnnoEsercizioMovimenti = 2011;
    object_.ProgressivoEsercizio = object_.ProgressivoEsercizioMovimenti = 1;
    object_.BdgTipoScheda = 0;
    object_.TipoDettaglioDestinazione = 1;
    object_.TipoDataMovimenti = dateKind;
    object_.TipoMovimenti = "1 = 1";
    object_.DaData = values::Date::FromYmd(2011, 1, 1);
    object_.AData = values::Date::FromYmd(2011, 12, 31);
    const auto recorder = std::make_shared<bench::Recorder>(connection_);
    object_.Connessione(recorder);
    elaborate();
    object_.Connessione(connection_);
    for (const auto& text : recorder->texts)
      if (text.find("CG42_MOVCONT") != std::string::npos) query_ = text;
    scan_ = tsql::scan(query_);
    translation_ = translate(scan_, SchemaCatalog(raw_), "raw_");
    statement_ = prepare(raw_, translation_.main.sql);
  }
  void elaborate() {
    object_.BdgElaSchede_Elaborazione();
    if (object_.Stato() != 0) throw std::runtime_error(object_.errore());
  }

  /// Every card's rows, every column read and dropped.
  long fetch() {
    const std::string last = account(cards_);
    std::size_t position = 0;
    while (scan_.literals[position].text != last) ++position;
    long rows = 0;
    for (int card = 1; card <= cards_; ++card) {
      scan_.literals[position].text = account(card);
      bindLiterals(statement_.get(), translation_.main.bindings, scan_.literals);
      rows += bench::stepAll(raw_, statement_.get());
    }
    return rows;
  }

 private:
  static std::string account(int card) {
    char text[16];
    std::snprintf(text, sizeof text, "6%07d", card);
    return text;
  }
  int cards_;
  bench::FileDatabase database_{"bench_cards"};
  std::shared_ptr<SqliteConnection> connection_ = database_.connection;
  sqlite3* raw_ = database_.raw.get();
  Prepared statement_;
  bukorval::CLSKORVAL object_;
  std::string query_;
  tsql::Scan scan_;
  Translation translation_;
};

std::map<int, std::map<long, double>> objectSeconds;

void elaborate(benchmark::State& state) {
  const int dateKind = static_cast<int>(state.range(0));
  const int lines = static_cast<int>(state.range(1));
  Bench bench(lines, dateKind);
  double object = 0, raw = 0;
  long rows = 0;
  for (auto _ : state) {
    const double once = seconds([&] { bench.elaborate(); });
    object += once;
    raw += seconds([&] { rows = bench.fetch(); });
    state.SetIterationTime(once);
  }
  auto& times = objectSeconds[dateKind];
  times[lines] = object / static_cast<double>(state.iterations());
  state.counters["rows"] = static_cast<double>(rows);
  state.counters["object/raw"] = object / raw;
  if (times.size() > 1) state.counters["exponent"] = bench::growthExponent(times, lines);
}
BENCHMARK(elaborate)
    ->ArgNames({"competence", "lines"})
    ->ArgsProduct({{0, 1}, {10000, 100000, 1000000}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

}  // namespace

int main(int argc, char** argv) {
  suite::registraServiziSuite();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
