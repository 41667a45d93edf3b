// A budget to a spreadsheet and back, in steps: the cards read from the database, the file written, the file read and
// compared with the cards. CPU time of the whole process; the ratio is against stepping the cards' details once.
#include <benchmark/benchmark.h>

#include <ctime>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include "FileDatabase.h"
#include "dati/import/Problems.h"
#include "object/CLSKORVAL.h"
#include "sheet/SheetFile.h"
#include "sheet/XlsxWriter.h"
#include "suite/Sessione.h"
#include "suite/Suite.h"

namespace {

using namespace bukorval;

void fill(sqlite3* database, long cards) {
  const auto count = std::to_string(cards);
  sqlite::run(database, "BEGIN");
  sqlite::run(database, ("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " + count +
                         ") INSERT INTO BU65_TESBUDGET (BU65_DITTA_CG18, BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01,"
                         " BU65_ANNO, BU65_PROGESER, BU65_INDCOSRIC_BU07, BU65_SCHEDA_BU07)"
                         " SELECT 1, 3, '01', 2011, 1, 0, printf('C%06d', i) FROM n")
                            .c_str());
  sqlite::run(database, ("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 < " + count +
                         " * 12) INSERT INTO BU66_DETBUDGET (BU66_ID_BU65, BU66_TIPO, BU66_PERIODO, BU66_IMPORTO)"
                         " SELECT i / 12 + 1, 0, i % 12 + 1, (i * 7919) % 100000000 FROM n")
                            .c_str());
  sqlite::run(database, "COMMIT");
}

double cpuSeconds(const auto& work) {
  const auto start = std::clock();
  work();
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

void sheetThereAndBack(benchmark::State& state) {
  bench::FileDatabase database("bench_sheet");
  database.connection->Execute(
      "INSERT INTO BU01_ANABUDGET (BU01_INDTIPO, BU01_SOTTOTIPO, BU01_STRUTTURA, BU01_NUMFORECAST)"
      " VALUES (3, '01', N'SCH', 2)");
  fill(database.raw.get(), state.range(0));
  CLSKORVAL object;
  object.ActiveInterface = std::make_shared<suite::Sessione>(database.connection);
  object.Connessione(database.connection);
  object.CodiceDitta = 1;
  object.TipoBudget = 3;
  object.SottoTipoBudget = "01";
  object.AnnoEsercizio = 2011;
  object.ProgressivoEsercizio = 1;
  const sheet::SheetSelection selection{{budgetScelto(object), {}, {}}};
  const auto details = sqlite::prepare(
      database.raw.get(), "SELECT BU66_ID_BU65, BU66_PERIODO, BU66_IMPORTO FROM BU66_DETBUDGET WHERE BU66_TIPO = 0");
  const auto file = std::filesystem::temp_directory_path() / "bench_sheet.xlsx";
  double read = 0, write = 0, back = 0, engine = 0;
  for (auto _ : state) {
    sheet::BudgetSheet cards;
    read += cpuSeconds([&] { cards = sheet::readBudgetSheet(object, *database.connection, selection); });
    write += cpuSeconds([&] { sheet::writeXlsx(cards, file.string()); });
    dati::Problems problems;
    back += cpuSeconds([&] {
      const auto changed = sheet::readSheetFile(file.string(), "utf-8", problems);
      if (!sheet::sheetChanges(changed, cards, problems).empty() || problems.count() > 0)
        throw std::runtime_error("the sheet came back changed");
    });
    engine += cpuSeconds([&] { bench::stepAll(database.raw.get(), details.get()); });
  }
  const auto runs = static_cast<double>(state.iterations());
  state.counters["read_ms"] = read / runs * 1000;
  state.counters["write_ms"] = write / runs * 1000;
  state.counters["back_ms"] = back / runs * 1000;
  state.counters["export/engine"] = (read + write) / engine;
  std::filesystem::remove(file);
}
BENCHMARK(sheetThereAndBack)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace

int main(int argc, char** argv) {
  suite::registraServiziSuite();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
