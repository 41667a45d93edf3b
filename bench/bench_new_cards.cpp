// New cards with 60 empty details each against prepared inserts of the same rows with the same existence test, both
// in one transaction. Budget type 3 has nature 2, so forecasts 3 make five kinds: 0, 1, 3, 4 and 5.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <memory>
#include <stdexcept>
#include <string>

#include "Timing.h"
#include "object/CLSKORVAL.h"
#include "schema/Schema.h"
#include "sqlite/Handle.h"
#include "sqlite/SqliteConnection.h"
#include "sqlite/functions/Functions.h"
#include "suite/Sessione.h"
#include "suite/Suite.h"

namespace {

using namespace sqlite;
using bench::seconds;

constexpr int kKinds[] = {0, 1, 3, 4, 5};
constexpr int kPeriods = 12;

/// An in-memory database with a company and a budget definition, and the object on it.
struct Company {
  std::shared_ptr<SqliteConnection> connection = std::make_shared<SqliteConnection>();
  bukorval::CLSKORVAL object;

  Company() {
    connection->ConnectionString = "Provider=SQLite;Data Source=:memory:";
    connection->Open();
    schema::create(*connection);
    connection->Execute(
        "INSERT INTO CG18_ANADITTE (CG18_CODICE, CG18_RAGSOC, CG18_GRUPPO_CG10) VALUES (1, N'Prova', 1)");
    connection->Execute(
        "INSERT INTO BU01_ANABUDGET (BU01_INDTIPO, BU01_SOTTOTIPO, BU01_STRUTTURA, BU01_NUMFORECAST)"
        " VALUES (3, '01', N'SCH', 3)");
    object.ActiveInterface = std::make_shared<suite::Sessione>(connection);
    object.Connessione(connection);
    object.TipoBudget = 3;
    object.SottoTipoBudget = "01";
    object.AnnoEsercizio = 2011;
    object.ProgressivoEsercizio = 1;
  }

  void insert(int cards) {
    connection->BeginTrans();
    for (int i = 0; i < cards; ++i) {
      auto columns = std::make_shared<ado::Dictionary>();
      columns->Add("BU65_SCHEDA_BU07", "C" + std::to_string(i));
      object.InserimentoNuovaSchedaBudget(columns);
      if (object.Stato() != 0) throw std::runtime_error(object.errore());
    }
    connection->CommitTrans();
  }
};

/// The tables as the provider declares them, filled by two prepared statements.
struct Raw {
  Database database;

  Raw() {
    sqlite3* raw = nullptr;
    if (sqlite3_open(":memory:", &raw) != SQLITE_OK) throw std::runtime_error("cannot open");
    database.reset(raw);
    registerFunctions(raw);
    run(raw,
        "CREATE TABLE BU65 (BU65_ID INTEGER PRIMARY KEY AUTOINCREMENT, DITTA DECIMAL, TIPO INT, SOTTO CHAR(2) COLLATE "
        "BK_ORDER,"
        " ANNO DECIMAL, PROG DECIMAL, SCHEDA VARCHAR(10) COLLATE BK_ORDER, B DECIMAL, C DECIMAL, AGG INT,"
        " COSRIC DECIMAL, SEDE DECIMAL)");
    run(raw, "CREATE INDEX I65 ON BU65 (DITTA, TIPO, SOTTO, ANNO, PROG, COSRIC, SCHEDA, SEDE)");
    run(raw,
        "CREATE TABLE BU66 (BU66_ID INTEGER PRIMARY KEY AUTOINCREMENT, ID_BU65 DECIMAL NOT NULL, TIPO SMALLINT NOT "
        "NULL,"
        " PERIODO SMALLINT NOT NULL, IMPORTO DECIMAL, QTA1 DECIMAL, QTA2 DECIMAL)");
    run(raw, "CREATE INDEX I66A ON BU66 (TIPO, ID_BU65, PERIODO, IMPORTO, QTA1, QTA2)");
    run(raw, "CREATE INDEX I66B ON BU66 (ID_BU65, TIPO, PERIODO)");
  }

  void insert(int cards) {
    auto* raw = database.get();
    const auto card = prepare(raw,
                              "INSERT INTO BU65 (DITTA, TIPO, SOTTO, ANNO, PROG, SCHEDA, B, C, AGG)"
                              " VALUES (1, 3, '01', 2011, 1, ?1, 0, 0, 20110101000000)");
    const auto detail = prepare(raw,
                                "INSERT INTO BU66 (ID_BU65, TIPO, PERIODO) SELECT ?1, ?2, ?3 WHERE NOT EXISTS"
                                " (SELECT 1 FROM BU66 WHERE ID_BU65 = ?1 AND TIPO = ?2 AND PERIODO = ?3)");
    run(raw, "BEGIN");
    for (int i = 0; i < cards; ++i) {
      const std::string code = "C" + std::to_string(i);
      sqlite3_bind_text(card.get(), 1, code.c_str(), -1, SQLITE_STATIC);
      stepToEnd(raw, card.get());
      const auto id = sqlite3_last_insert_rowid(raw);
      for (const int kind : kKinds)
        for (int period = 1; period <= kPeriods; ++period) {
          sqlite3_bind_int64(detail.get(), 1, id);
          sqlite3_bind_int(detail.get(), 2, kind);
          sqlite3_bind_int(detail.get(), 3, period);
          stepToEnd(raw, detail.get());
        }
    }
    run(raw, "COMMIT");
  }
};

void newCards(benchmark::State& state) {
  const int cards = static_cast<int>(state.range(0));
  double object = 0, raw = 0;
  Statistics statistics;
  for (auto _ : state) {
    Company company;
    Raw engine;
    company.insert(1);
    const auto before = company.connection->statistics();
    const double once = seconds([&] { company.insert(cards); });
    statistics = company.connection->statistics();
    statistics.prepared -= before.prepared;
    statistics.executed -= before.executed;
    object += once;
    raw += seconds([&] { engine.insert(cards); });
    state.SetIterationTime(once);
  }
  state.counters["object/raw"] = object / raw;
  state.counters["prepared"] = static_cast<double>(statistics.prepared);
  state.counters["executed"] = static_cast<double>(statistics.executed);
}
BENCHMARK(newCards)->Arg(1000)->Arg(10000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

int main(int argc, char** argv) {
  suite::registraServiziSuite();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
