// The object on PostgreSQL against hand-written libpq code that does the same work over the same tables: the budget
// grid, the card elaboration, new cards and the duplication. By hand every statement is prepared once and each answer
// waited for; on both sides the work is one transaction.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "PostgresDatabase.h"
#include "Recorder.h"
#include "Timing.h"
#include "object/CLSKORVAL.h"
#include "postgres/Parameters.h"
#include "suite/Sessione.h"
#include "suite/Suite.h"

namespace {

using bench::ByHand;
using bench::readAll;
using postgres::runSimple;

constexpr int kPeriods = 12;

/// The object on its database, with one budget definition.
struct Company {
  bench::PostgresDatabase database{"bench"};
  ado::ConnectionPtr connection = database.connection;
  PGconn* raw = database.raw.get();
  bukorval::CLSKORVAL object;

  /// @param definition  type and subtype, structure and forecasts of the budget.
  explicit Company(int type, const std::string& definition) {
    for (const char* year : {"2011", "2012", "2013"})
      connection->Execute(
          std::string("INSERT INTO CG19_ANADITTAESER (CG19_DITTA_CG18, CG19_ANNO, CG19_PROGESER, CG19_DATAINIZIO,"
                      " CG19_DATAFINE) VALUES (1, ") +
          year + ", 1, '" + year + "0101', '" + year + "1231')");
    connection->Execute(
        "INSERT INTO BU01_ANABUDGET (BU01_INDTIPO, BU01_SOTTOTIPO, BU01_STRUTTURA, BU01_NUMFORECAST) VALUES (" +
        definition + ")");
    object.ActiveInterface = std::make_shared<suite::Sessione>(connection);
    object.Connessione(connection);
    object.CodiceDitta = 1;
    object.TipoBudget = type;
    object.SottoTipoBudget = "01";
    object.AnnoEsercizio = 2011;
    object.ProgressivoEsercizio = 1;
  }
  void require() {
    if (object.Stato() != 0) throw std::runtime_error(object.errore());
  }
  void run(const std::string& sql) { runSimple(raw, sql); }
};

/// Cards of 2011 with the codes C000001, C000002, …
void fillCards(Company& company, int cards, const std::string& type) {
  company.run(
      "INSERT INTO BU65_TESBUDGET (BU65_DITTA_CG18, BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_ANNO, BU65_PROGESER,"
      " BU65_INDCOSRIC_BU07, BU65_SCHEDA_BU07, BU65_GRUPPO_CG10, BU65_CONTO_CG24) SELECT 1, " +
      type +
      ", '01', 2011, 1, 0, 'C' || lpad(i::text, 6, '0'), 1, '6' || lpad(i::text, 7, '0') FROM generate_series(1, " +
      std::to_string(cards) + ") i");
}

/// What a run of Google Benchmark reports of a race.
void report(benchmark::State& state, const bench::Race& race) {
  state.counters["object/libpq"] = race.ratio();
  state.counters["client"] = race.ratioOfClient();
}

/// One pass over the details, card by card and period by period; orders count by their latest row.
constexpr const char* kGridByHand = R"(
SELECT BU65_ID, BU65_DITTA_CG18, BU65_SCHEDA_BU07, t.* FROM BU65_TESBUDGET LEFT JOIN (
  SELECT BU66_ID_BU65 AS ID,
         SUM(b0), SUM(b1), SUM(b2), SUM(c0), SUM(c1), SUM(c2), (MAX(o))[2], (MAX(o))[3], (MAX(o))[4],
         SUM(CASE WHEN f THEN coalesce(c0, f0) END), SUM(CASE WHEN f THEN coalesce(c1, f1) END),
         SUM(CASE WHEN f THEN coalesce(c2, f2) END), SUM(CASE WHEN g THEN coalesce(c0, g0) END),
         SUM(CASE WHEN g THEN coalesce(c1, g1) END), SUM(CASE WHEN g THEN coalesce(c2, g2) END)
  FROM (SELECT BU66_ID_BU65,
               SUM(BU66_IMPORTO) FILTER (WHERE BU66_TIPO = 0) AS b0, SUM(BU66_QTA1) FILTER (WHERE BU66_TIPO = 0) AS b1,
               SUM(BU66_QTA2) FILTER (WHERE BU66_TIPO = 0) AS b2,
               SUM(BU66_IMPORTO) FILTER (WHERE BU66_TIPO = 1) AS c0, SUM(BU66_QTA1) FILTER (WHERE BU66_TIPO = 1) AS c1,
               SUM(BU66_QTA2) FILTER (WHERE BU66_TIPO = 1) AS c2,
               MAX(ARRAY[BU66_ID, BU66_IMPORTO, BU66_QTA1, BU66_QTA2]) FILTER (WHERE BU66_TIPO = 2) AS o,
               SUM(BU66_IMPORTO) FILTER (WHERE BU66_TIPO = 3) AS f0, SUM(BU66_QTA1) FILTER (WHERE BU66_TIPO = 3) AS f1,
               SUM(BU66_QTA2) FILTER (WHERE BU66_TIPO = 3) AS f2, bool_or(BU66_TIPO = 3) AS f,
               SUM(BU66_IMPORTO) FILTER (WHERE BU66_TIPO = 4) AS g0, SUM(BU66_QTA1) FILTER (WHERE BU66_TIPO = 4) AS g1,
               SUM(BU66_QTA2) FILTER (WHERE BU66_TIPO = 4) AS g2, bool_or(BU66_TIPO = 4) AS g
        FROM BU66_DETBUDGET GROUP BY BU66_ID_BU65, BU66_PERIODO) p
  GROUP BY BU66_ID_BU65) t ON t.ID = BU65_ID
ORDER BY BU65_SCHEDA_BU07)";

/// 60 details a card: 12 periods of budget, actuals (the last three without), orders and two forecasts.
void grid(benchmark::State& state) {
  const int cards = static_cast<int>(state.range(0));
  Company company(3, "3, '01', N'SCH', 2");
  fillCards(company, cards, "3");
  company.run(
      "INSERT INTO BU66_DETBUDGET (BU66_ID_BU65, BU66_TIPO, BU66_PERIODO, BU66_IMPORTO, BU66_QTA1) SELECT i / 60 + 1,"
      " i % 60 / 12, i % 12 + 1, CASE WHEN i % 60 / 12 = 1 AND i % 12 > 8 THEN NULL ELSE (i * 7919 % 1000000) / 100.0"
      " END, (i * 31 % 100000) / 1000.0 FROM generate_series(0::bigint, " +
      std::to_string(cards * 60L - 1) + ") i");
  company.run("ANALYZE");
  const ByHand hand(company.raw, "grid", kGridByHand);
  long rows = 0, handRows = 0;
  const auto object = [&] {
    const auto set = company.object.RecordSetBudget();
    company.require();
    rows = set->RecordCount();
  };
  const auto byHand = [&] { handRows = readAll(hand().get()); };
  object();
  byHand();
  bench::Race race;
  for (auto _ : state) state.SetIterationTime(race.run(object, byHand));
  if (rows != cards || handRows != cards) state.SkipWithError("the ways do not give the same number of cards");
  report(state, race);
}
BENCHMARK(grid)->Arg(1000)->Arg(10000)->Arg(50000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

constexpr int kLinesPerCard = 500;

/// A year of movements spread evenly over the accounts; one line in two has a competence interval of up to three
/// months.
void fillLedger(Company& company, int lines) {
  const std::string cards = std::to_string(lines / kLinesPerCard);
  company.run(
      "INSERT INTO CG41_PRIMANOTA (CG41_DITTA_CG18, CG41_NUMREG, CG41_DATAREG, CG41_ANNO_CG19, CG41_PROGESER_CG19,"
      " CG41_INDPROVREG) SELECT 1, i, make_timestamp(2011, i % 12 + 1, i % 28 + 1, 0, 0, 0), 2011, 1, 0"
      " FROM generate_series(1, " +
      std::to_string(lines / 10) + ") i");
  company.run(
      "INSERT INTO CG42_MOVCONT (CG42_DITTA_CG18, CG42_NUMREG_CG41, CG42_NUMRIGACONT, CG42_GRUPPO_CG10,"
      " CG42_CONTOPAR_CG24, CG42_INDDAAV, CG42_IMPTOTALE, CG42_DATAINICOMP, CG42_DATAFINCOMP)"
      " SELECT 1, (i - 1) / 10 + 1, (i - 1) % 10 + 1, 1, '6' || lpad((i * 7919 % " +
      cards +
      " + 1)::text, 7, '0'), 1 + (i % 9 = 0)::int, (i * 7919 % 1000000) / 100.0,"
      " CASE WHEN i % 2 = 1 THEN make_timestamp(2011, (i % 9 + 1)::int, 5, 0, 0, 0) END,"
      " CASE WHEN i % 2 = 1 THEN make_timestamp(2011, (i % 9 + 3)::int, 17, 0, 0, 0) END FROM "
      "generate_series(1::bigint, " +
      std::to_string(lines) + ") i");
  fillCards(company, lines / kLinesPerCard, "4");
  company.run("INSERT INTO BU67_BDGCASHFLOW (BU67_ID_BU65) SELECT BU65_ID FROM BU65_TESBUDGET");
  company.run("VACUUM ANALYZE");
}

std::string account(int card) {
  char text[16];
  std::snprintf(text, sizeof text, "6%07d", card);
  return text;
}

/// Card by card the same query of its movements as the object's, each row read, and the twelve details written.
class ElaborationByHand {
 public:
  ElaborationByHand(Company& company, std::string query, int cards)
      : company_(company),
        cards_(cards),
        scan_(tsql::scan(query_ = std::move(query))),
        translation_(postgres::translate(scan_, company.database.connection->catalog())),
        movements_(company.raw, "movements", translation_.sql, typesOf(translation_)),
        write_(company.raw, "write",
               "UPDATE BU66_DETBUDGET SET BU66_IMPORTO = $1 WHERE BU66_ID_BU65 = $2 AND BU66_TIPO = 1 AND"
               " BU66_PERIODO = $3") {
    while (scan_.literals[account_].text != account(cards)) ++account_;
  }

  void operator()() {
    company_.run("BEGIN");
    rows = 0;
    for (int card = 1; card <= cards_; ++card) {
      scan_.literals[account_].text = account(card);
      const postgres::Parameters parameters(translation_.parameters, scan_.literals);
      rows += readAll(movements_.run(parameters.values(), parameters.count()).get());
      for (int period = 1; period <= kPeriods; ++period)
        write_({std::to_string(period) + ".25", std::to_string(card), std::to_string(period)});
    }
    company_.run("COMMIT");
  }
  long rows = 0;

 private:
  static std::vector<Oid> typesOf(const postgres::Translation& translation) {
    std::vector<Oid> types;
    for (const auto& parameter : translation.parameters) types.push_back(parameter.type);
    return types;
  }
  Company& company_;
  int cards_;
  std::string query_;
  tsql::Scan scan_;
  postgres::Translation translation_;
  ByHand movements_, write_;
  std::size_t account_ = 0;
};

void elaborateCards(benchmark::State& state) {
  const int lines = static_cast<int>(state.range(1));
  Company company(4, "4, '01', N'CON', 0");
  fillLedger(company, lines);
  auto& object = company.object;
  object.AnnoEsercizioMovimenti = 2011;
  object.ProgressivoEsercizioMovimenti = 1;
  object.BdgTipoScheda = 0;
  object.TipoDettaglioDestinazione = 1;
  object.TipoDataMovimenti = static_cast<int>(state.range(0));
  object.TipoMovimenti = "1 = 1";
  object.DaData = values::Date::FromYmd(2011, 1, 1);
  object.AData = values::Date::FromYmd(2011, 12, 31);
  const auto elaborate = [&] {
    object.BdgElaSchede_Elaborazione();
    company.require();
  };
  const auto recorder = std::make_shared<bench::Recorder>(company.connection);
  object.Connessione(recorder);
  elaborate();
  object.Connessione(company.connection);
  std::string query;
  for (const auto& text : recorder->texts)
    if (text.find("CG42_MOVCONT") != std::string::npos) query = text;
  company.run("VACUUM ANALYZE");
  ElaborationByHand hand(company, query, lines / kLinesPerCard);
  bench::Race race;
  for (auto _ : state) state.SetIterationTime(race.run(elaborate, hand));
  state.counters["rows"] = static_cast<double>(hand.rows);
  state.counters["texts"] = static_cast<double>(recorder->texts.size());
  report(state, race);
}
BENCHMARK(elaborateCards)
    ->ArgNames({"competence", "lines"})
    ->ArgsProduct({{0, 1}, {10000, 100000, 1000000}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(2);

/// An empty detail, unless it is there.
const char* const kEmptyDetail =
    "INSERT INTO BU66_DETBUDGET (BU66_ID_BU65, BU66_TIPO, BU66_PERIODO) SELECT $1, $2, $3 WHERE NOT EXISTS (SELECT 1"
    " FROM BU66_DETBUDGET WHERE BU66_ID_BU65 = $1 AND BU66_TIPO = $2 AND BU66_PERIODO = $3)";

/// Cards with 60 empty details each.
void newCards(benchmark::State& state) {
  const int cards = static_cast<int>(state.range(0));
  Company company(3, "3, '01', N'SCH', 3");
  const ByHand header(company.raw, "header",
                      "INSERT INTO BU65_TESBUDGET (BU65_DITTA_CG18, BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_ANNO,"
                      " BU65_PROGESER, BU65_SCHEDA_BU07) VALUES (1, 3, '01', 2011, 1, $1) RETURNING BU65_ID");
  const ByHand detail(company.raw, "detail", kEmptyDetail);
  int code = 0;
  const auto byHand = [&] {
    company.run("BEGIN");
    for (int i = 0; i < cards; ++i) {
      const std::string id(postgres::cell(header({"H" + std::to_string(++code)}).get(), 0, 0));
      for (const char* kind : {"0", "1", "3", "4", "5"})
        for (int period = 1; period <= kPeriods; ++period) detail({id, kind, std::to_string(period)});
    }
    company.run("COMMIT");
  };
  const auto object = [&] {
    company.connection->BeginTrans();
    for (int i = 0; i < cards; ++i) {
      auto columns = std::make_shared<ado::Dictionary>();
      columns->Add("BU65_SCHEDA_BU07", "C" + std::to_string(++code));
      company.object.InserimentoNuovaSchedaBudget(columns);
      company.require();
    }
    company.connection->CommitTrans();
  };
  bench::Race race;
  for (auto _ : state) state.SetIterationTime(race.run(object, byHand));
  report(state, race);
}
BENCHMARK(newCards)->Arg(100)->Arg(1000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(2);

/// The copy of a year's cards into the year of its own: look the card up, copy its header, create 24 empty details,
/// read and write 12 amounts.
class DuplicationByHand {
 public:
  explicit DuplicationByHand(Company& company) : company_(company) {}

  void operator()() {
    company_.run("BEGIN");
    const auto sources = cards_();
    for (int row = 0; row < PQntuples(sources.get()); ++row)
      duplicate(std::string(postgres::cell(sources.get(), row, 0)), std::string(postgres::cell(sources.get(), row, 1)));
    company_.run("COMMIT");
  }

 private:
  void duplicate(const std::string& source, const std::string& code) {
    look_({code});
    const std::string id(postgres::cell(header_({source}).get(), 0, 0));
    for (const char* kind : {"0", "1"})
      for (int period = 1; period <= kPeriods; ++period) empty_({id, kind, std::to_string(period)});
    flag_({id});
    const auto details = read_({source});
    for (int row = 0; row < PQntuples(details.get()); ++row) {
      const std::string period(postgres::cell(details.get(), row, 0));
      empty_({id, "0", period});
      write_({id, "0", period, std::string(postgres::cell(details.get(), row, 1))});
    }
  }

  Company& company_;
  ByHand cards_{company_.raw, "cards",
                "SELECT BU65_ID, BU65_SCHEDA_BU07 FROM BU65_TESBUDGET WHERE BU65_DITTA_CG18 = 1 AND BU65_INDTIPO_BU01 ="
                " 3 AND bk_fold(BU65_SOTTOTIPO_BU01) = bk_fold('01') AND BU65_ANNO = 2011 AND BU65_PROGESER = 1 AND"
                " BU65_INDCOSRIC_BU07 = 0 ORDER BY 2"};
  ByHand look_{company_.raw, "look",
               "SELECT * FROM BU65_TESBUDGET WHERE BU65_DITTA_CG18 = 1 AND BU65_INDTIPO_BU01 = 3 AND"
               " bk_fold(BU65_SOTTOTIPO_BU01) = bk_fold('01') AND BU65_ANNO = 2013 AND BU65_PROGESER = 1 AND"
               " BU65_INDCOSRIC_BU07 = 0 AND bk_fold(BU65_SCHEDA_BU07) = bk_fold($1)"};
  ByHand header_{company_.raw, "copy",
                 "INSERT INTO BU65_TESBUDGET (BU65_DITTA_CG18, BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_ANNO,"
                 " BU65_PROGESER, BU65_INDCOSRIC_BU07, BU65_SCHEDA_BU07) SELECT BU65_DITTA_CG18, BU65_INDTIPO_BU01,"
                 " BU65_SOTTOTIPO_BU01, 2013, BU65_PROGESER, BU65_INDCOSRIC_BU07, BU65_SCHEDA_BU07 FROM BU65_TESBUDGET"
                 " WHERE BU65_ID = $1 RETURNING BU65_ID"};
  ByHand empty_{company_.raw, "empty", kEmptyDetail};
  ByHand flag_{company_.raw, "flag", "UPDATE BU65_TESBUDGET SET BU65_CODICE_CG31 = NULL WHERE BU65_ID = $1"};
  ByHand read_{company_.raw, "read",
               "SELECT BU66_PERIODO, BU66_IMPORTO, BU66_QTA1, BU66_QTA2 FROM BU66_DETBUDGET WHERE BU66_ID_BU65 = $1 AND"
               " BU66_TIPO = 0 ORDER BY BU66_PERIODO, BU66_ID"};
  ByHand write_{company_.raw, "fill",
                "UPDATE BU66_DETBUDGET SET BU66_IMPORTO = $4, BU66_QTA1 = NULL, BU66_QTA2 = NULL WHERE BU66_ID_BU65 ="
                " $1 AND BU66_TIPO = $2 AND BU66_PERIODO = $3"};
};

/// Cards with 12 budget amounts; the object's go into the next year, those by hand into the one after.
void duplicate(benchmark::State& state) {
  const int cards = static_cast<int>(state.range(0));
  bench::Race race;
  for (auto _ : state) {
    Company company(3, "3, '01', N'SCH', 0");
    fillCards(company, cards, "3");
    company.run(
        "INSERT INTO BU66_DETBUDGET (BU66_ID_BU65, BU66_TIPO, BU66_PERIODO, BU66_IMPORTO) SELECT i / 12 + 1, 0,"
        " i % 12 + 1, i % 1000 + 0.25 FROM generate_series(0, " +
        std::to_string(cards * kPeriods - 1) + ") i");
    company.run("VACUUM ANALYZE");
    auto& object = company.object;
    object.BdgDestinazioneSottoTipo = "01";
    object.BdgDestinazioneAnnoEsercizio = 2012;
    object.BdgDestinazioneProgressivoEsercizio = 1;
    object.BdgTipoScheda = 0;
    DuplicationByHand hand(company);
    state.SetIterationTime(race.run(
        [&] {
          object.BdgDupSchede_Duplicazione();
          company.require();
        },
        hand));
  }
  report(state, race);
}
BENCHMARK(duplicate)->Arg(100)->Arg(1000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(2);

}  // namespace

int main(int argc, char** argv) {
  suite::registraServiziSuite();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
