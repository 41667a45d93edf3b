// The duplication of cards with 12 budget amounts into the next year against the raw engine making the same rows with
// prepared statements: look the card up, copy its header, create 24 empty details, read and write 12 amounts.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

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

constexpr int kPeriods = 12;

/// An in-memory database with cards of 2011, and the object on it.
struct Company {
  std::shared_ptr<SqliteConnection> connection = std::make_shared<SqliteConnection>();
  bukorval::CLSKORVAL object;

  explicit Company(int cards) {
    connection->ConnectionString = "Provider=SQLite;Data Source=:memory:";
    connection->Open();
    schema::create(*connection);
    connection->Execute(
        "INSERT INTO CG18_ANADITTE (CG18_CODICE, CG18_RAGSOC, CG18_GRUPPO_CG10) VALUES (1, N'Prova', 1)");
    for (const char* year : {"2011", "2012"})
      connection->Execute(
          std::string("INSERT INTO CG19_ANADITTAESER (CG19_DITTA_CG18, CG19_ANNO, CG19_PROGESER, CG19_DATAINIZIO,"
                      " CG19_DATAFINE) VALUES (1, ") +
          year + ", 1, '" + year + "0101', '" + year + "1231')");
    connection->Execute(
        "INSERT INTO BU01_ANABUDGET (BU01_INDTIPO, BU01_SOTTOTIPO, BU01_STRUTTURA, BU01_NUMFORECAST)"
        " VALUES (3, '01', N'SCH', 0)");
    connection->BeginTrans();
    for (int i = 1; i <= cards; ++i) {
      const std::string id = std::to_string(i);
      connection->Execute(
          "INSERT INTO BU65_TESBUDGET (BU65_DITTA_CG18, BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_ANNO,"
          " BU65_PROGESER, BU65_INDCOSRIC_BU07, BU65_SCHEDA_BU07) VALUES (1, 3, '01', 2011, 1, 0, 'C" +
          id + "')");
      for (int period = 1; period <= kPeriods; ++period)
        connection->Execute(
            "INSERT INTO BU66_DETBUDGET (BU66_ID_BU65, BU66_TIPO, BU66_PERIODO, BU66_IMPORTO) VALUES (" + id + ", 0, " +
            std::to_string(period) + ", " + std::to_string(i % 1000) + ".25)");
    }
    connection->CommitTrans();
    object.ActiveInterface = std::make_shared<suite::Sessione>(connection);
    object.Connessione(connection);
    object.CodiceDitta = 1;
    object.TipoBudget = 3;
    object.SottoTipoBudget = object.BdgDestinazioneSottoTipo = "01";
    object.AnnoEsercizio = 2011;
    object.BdgDestinazioneAnnoEsercizio = 2012;
    object.ProgressivoEsercizio = object.BdgDestinazioneProgressivoEsercizio = 1;
    object.BdgTipoScheda = 0;
  }

  void duplicate() {
    object.BdgDupSchede_Duplicazione();
    if (object.Stato() != 0) throw std::runtime_error(object.errore());
  }
};

/// The same database, the copy made by prepared statements on its own handle.
struct Raw {
  Database database;

  explicit Raw(int cards) {
    sqlite3* raw = nullptr;
    if (sqlite3_open(":memory:", &raw) != SQLITE_OK) throw std::runtime_error("cannot open");
    database.reset(raw);
    registerFunctions(raw);
    run(raw,
        "CREATE TABLE H (ID INTEGER PRIMARY KEY AUTOINCREMENT, DITTA DECIMAL, TIPO INT, SOTTO CHAR(2) COLLATE "
        "BK_ORDER, "
        "ANNO DECIMAL,"
        " PROG DECIMAL, COSRIC DECIMAL, SCHEDA VARCHAR(10) COLLATE BK_ORDER, SEDE DECIMAL, AGG INT, CFLOW DECIMAL)");
    run(raw, "CREATE INDEX IH ON H (DITTA, TIPO, SOTTO, ANNO, PROG, COSRIC, SCHEDA, SEDE)");
    run(raw,
        "CREATE TABLE D (ID INTEGER PRIMARY KEY AUTOINCREMENT, H DECIMAL NOT NULL, TIPO SMALLINT NOT NULL, PERIODO "
        "SMALLINT NOT NULL,"
        " IMPORTO DECIMAL, QTA1 DECIMAL, QTA2 DECIMAL)");
    run(raw, "CREATE INDEX IDA ON D (TIPO, H, PERIODO, IMPORTO, QTA1, QTA2)");
    run(raw, "CREATE INDEX IDB ON D (H, TIPO, PERIODO)");
    const std::string n = std::to_string(cards);
    run(raw, ("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " + n +
              ") INSERT INTO H (DITTA, TIPO, SOTTO,"
              " ANNO, PROG, COSRIC, SCHEDA) SELECT 1, 3, '01', 2011, 1, 0, 'C' || i FROM n")
                 .c_str());
    run(raw, ("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 < 12 * " + n +
              ") INSERT INTO D (H, TIPO,"
              " PERIODO, IMPORTO) SELECT i / 12 + 1, 0, i % 12 + 1, i FROM n")
                 .c_str());
  }

  void duplicate() {
    auto* raw = database.get();
    const auto cards =
        prepare(raw,
                "SELECT ID, SCHEDA FROM H WHERE DITTA = 1 AND TIPO = 3 AND SOTTO = '01' AND ANNO = 2011 AND PROG = 1"
                " AND COSRIC = 0 ORDER BY SCHEDA");
    const auto look =
        prepare(raw,
                "SELECT * FROM H WHERE DITTA = 1 AND TIPO = 3 AND SOTTO = '01' AND ANNO = 2012 AND PROG = 1 AND"
                " COSRIC = 0 AND SCHEDA = ?1");
    const auto header =
        prepare(raw,
                "INSERT INTO H (DITTA, TIPO, SOTTO, ANNO, PROG, COSRIC, SCHEDA, AGG) SELECT DITTA, TIPO, SOTTO, 2012,"
                " PROG, COSRIC, SCHEDA, 20120101000000 FROM H WHERE ID = ?1");
    const auto empty =
        prepare(raw,
                "INSERT INTO D (H, TIPO, PERIODO) SELECT ?1, ?2, ?3 WHERE NOT EXISTS (SELECT 1 FROM D WHERE H = ?1"
                " AND TIPO = ?2 AND PERIODO = ?3)");
    const auto flag = prepare(raw, "UPDATE H SET CFLOW = NULL WHERE ID = ?1");
    const auto read =
        prepare(raw, "SELECT PERIODO, IMPORTO, QTA1, QTA2 FROM D WHERE H = ?1 AND TIPO = 0 ORDER BY PERIODO, ID");
    const auto write =
        prepare(raw, "UPDATE D SET IMPORTO = ?4, QTA1 = NULL, QTA2 = NULL WHERE H = ?1 AND TIPO = ?2 AND PERIODO = ?3");
    std::vector<std::pair<sqlite3_int64, std::string>> sources;
    while (sqlite3_step(cards.get()) == SQLITE_ROW)
      sources.emplace_back(sqlite3_column_int64(cards.get(), 0),
                           reinterpret_cast<const char*>(sqlite3_column_text(cards.get(), 1)));
    run(raw, "BEGIN");
    for (const auto& [source, code] : sources) {
      sqlite3_bind_text(look.get(), 1, code.c_str(), -1, SQLITE_STATIC);
      stepToEnd(raw, look.get());
      sqlite3_bind_int64(header.get(), 1, source);
      stepToEnd(raw, header.get());
      const auto id = sqlite3_last_insert_rowid(raw);
      for (int kind = 0; kind <= 1; ++kind)
        for (int period = 1; period <= kPeriods; ++period) detail(raw, empty.get(), id, kind, period);
      sqlite3_bind_int64(flag.get(), 1, id);
      stepToEnd(raw, flag.get());
      sqlite3_bind_int64(read.get(), 1, source);
      while (sqlite3_step(read.get()) == SQLITE_ROW) {
        const int period = sqlite3_column_int(read.get(), 0);
        detail(raw, empty.get(), id, 0, period);
        sqlite3_bind_int64(write.get(), 4, sqlite3_column_int64(read.get(), 1));
        detail(raw, write.get(), id, 0, period);
      }
      sqlite3_reset(read.get());
    }
    run(raw, "COMMIT");
  }

  static void detail(sqlite3* raw, sqlite3_stmt* statement, sqlite3_int64 id, int kind, int period) {
    sqlite3_bind_int64(statement, 1, id);
    sqlite3_bind_int(statement, 2, kind);
    sqlite3_bind_int(statement, 3, period);
    stepToEnd(raw, statement);
  }
};

std::map<long, double> objectSeconds;

void duplicate(benchmark::State& state) {
  const int cards = static_cast<int>(state.range(0));
  double object = 0, raw = 0;
  long statements = 0;
  for (auto _ : state) {
    Company company(cards);
    Raw engine(cards);
    const auto before = company.connection->statistics().executed;
    const double once = seconds([&] { company.duplicate(); });
    statements = company.connection->statistics().executed - before;
    object += once;
    raw += seconds([&] { engine.duplicate(); });
    state.SetIterationTime(once);
  }
  objectSeconds[cards] = object / static_cast<double>(state.iterations());
  state.counters["object/raw"] = object / raw;
  state.counters["executed"] = static_cast<double>(statements);
  if (objectSeconds.size() > 1) state.counters["exponent"] = bench::growthExponent(objectSeconds, cards);
}
BENCHMARK(duplicate)->Arg(1000)->Arg(10000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

int main(int argc, char** argv) {
  suite::registraServiziSuite();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
