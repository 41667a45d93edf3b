#include "report/Report.h"
#include "suite/Sessione.h"
#include "suite/Suite.h"
#include "support/SmallCompany.h"
#include "support/Test.h"
#include "values/Arithmetic.h"

namespace {

using bukorval::CLSKORVAL;
using bukorval::report::Query;
using bukorval::report::Result;
using bukorval::report::Row;
using testing_support::insert;

std::string textOf(const Variant& value) {
  return value.isNothing() ? "" : values::toDecimal(value).normalized().toString();
}
Variant sumOf(const Variant& a, const Variant& b) { return a.isNothing() ? b : b.isNothing() ? a : values::add(a, b); }

constexpr const char* kMeasures[][2] = {{"amount", "IMP"}, {"qty1", "QTA1"}, {"qty2", "QTA2"}};

/// A budget of any type, periodicity and year, with cards that have several orders of a period, values that are
/// missing, and periods that the budget does not have.
class RandomBudget {
 public:
  RandomBudget(ado::ConnectionPtr company, unsigned seed)
      : db(std::move(company)), random_(seed), subtype_(std::to_string(seed)) {
    object.ActiveInterface = std::make_shared<suite::Sessione>(db);
    object.Connessione(db);
    object.CodiceDitta = 1;
    object.TipoBudget = std::array{4, 4, 5, 0}[upTo(3)];
    object.SottoTipoBudget = subtype_;
    object.AnnoEsercizio = upTo(1) == 0 ? 2025 : 2024;
    object.ProgressivoEsercizio = 1;
    perSite = upTo(1) == 1;
    forecasts = static_cast<int>(upTo(2));
    periodicity_ = upTo(5);
    define();
    for (auto cards = upTo(9); cards > 0; --cards) addCard();
  }

  std::vector<std::string> values() const {
    std::vector<std::string> names{"budget", "actual", "orders", "delta", "delta%"};
    for (int n = 1; n <= forecasts; ++n)
      for (const char* part : {"", ".delta", ".delta%"}) names.push_back("forecast" + std::to_string(n) + part);
    return names;
  }
  std::vector<std::string> axes() const {
    std::vector<std::string> names{"account", "level:1", "level:2", "id"};
    if (perSite) names.emplace_back("site");
    if (object.TipoBudget == 4) names.insert(names.end(), {"kind", "card"});
    return names;
  }
  std::size_t upTo(std::size_t most) { return std::uniform_int_distribution<std::size_t>(0, most)(random_); }

  ado::ConnectionPtr db;
  CLSKORVAL object;
  bool perSite = false;
  int forecasts = 0;

 private:
  void define() {
    insert(*db, "BU01_ANABUDGET",
           "BU01_INDTIPO=" + std::to_string(object.TipoBudget) + ", BU01_SOTTOTIPO='" + subtype_ +
               "', BU01_STRUTTURA='CON', BU01_FLGSEDI=" + (perSite ? "1" : "0") +
               ", BU01_INDPERIODO=" + std::to_string(periodicity_) + ", BU01_INDPERFISO=" + std::to_string(upTo(1)) +
               ", BU01_NUMFORECAST=" + std::to_string(forecasts));
  }
  void addCard() {
    const auto id =
        insert(*db, "BU65_TESBUDGET",
               "BU65_DITTA_CG18=1, BU65_INDTIPO_BU01=" + std::to_string(object.TipoBudget) + ", BU65_SOTTOTIPO_BU01='" +
                   subtype_ + "', BU65_ANNO=" + values::toPlainText(object.AnnoEsercizio) +
                   ", BU65_PROGESER=1, BU65_INDCOSRIC_BU07=" + std::to_string(upTo(1)) +
                   ", BU65_CODICE_CG31=" + std::to_string(upTo(2) + 1) + ", BU65_SCHEDA_BU07='" +
                   std::string(1, "SaA"[upTo(2)]) + "', BU65_GRUPPO_CG10=1, BU65_CONTO_CG24=" +
                   std::array{"'50010001'", "'50010002'", "'70010001'", "NULL"}[upTo(3)]);
    std::set<std::pair<std::size_t, std::size_t>> filled;
    for (auto details = upTo(40); details > 0; --details) {
      const auto kind = upTo(4), period = upTo(6) + 1;
      if (!filled.emplace(kind, period).second && kind != bukorval::bdgDettaglioOrdini) continue;
      insert(*db, "BU66_DETBUDGET",
             "BU66_ID_BU65=" + id + ", BU66_TIPO=" + std::to_string(kind) + ", BU66_PERIODO=" + std::to_string(period) +
                 ", BU66_IMPORTO=" + value(2) + ", BU66_QTA1=" + value(3) + ", BU66_QTA2=" + value(3));
    }
  }
  std::string value(int decimals) {
    if (upTo(4) == 0) return "NULL";
    const auto units = static_cast<std::int64_t>(upTo(upTo(5) == 0 ? 500'000'000'000 : 2'000)) - 1'000;
    return Decimal::FromScaled(units, decimals).toString();
  }

  std::mt19937 random_;
  std::string subtype_;
  std::size_t periodicity_ = 0;
};

/// A company for budgets that differ in type and subtype.
struct Report : testing::Test {
  static void SetUpTestSuite() { suite::registraServiziSuite(); }

  ado::ConnectionPtr company = testing_support::smallCompany();
};

/// The grids of all sites and card kinds: the fields of a measure, by card.
using Grid = std::map<std::string, std::map<std::string, Variant>>;

Grid gridsOf(RandomBudget& budget, const std::string& field) {
  Grid grid;
  auto& object = budget.object;
  for (int site = 1; site <= (budget.perSite ? 3 : 1); ++site) {
    for (int kind = 0; kind <= (object.TipoBudget == 4 ? 1 : 0); ++kind) {
      object.CodiceSede = site;
      object.BdgTipoScheda = kind;
      const auto rows = object.RecordSetBudget();
      EXPECT_EQ(object.errore(), "");
      for (; !rows->Eof(); rows->MoveNext())
        for (std::size_t i = 0; i < rows->Fields().Count(); ++i)
          if (const auto& name = rows->Fields().Item(i).Name(); name.find(field) != std::string::npos)
            grid[textOf((*rows)["BU65_ID"].Value())][name] = rows->Fields().Item(i).Value();
    }
  }
  object.CodiceSede = Variant();
  object.BdgTipoScheda = Variant();
  return grid;
}

/// Fills what grids leave to the object's formulas.
void fillDeltas(CLSKORVAL& object, std::map<std::string, Variant>& row, const std::string& field, int forecasts) {
  const auto fill = [&](const std::string& value, const std::string& suffix) {
    const auto &of = row[field + value], &budget = row[field + "_BUDGET"];
    row["DELTA" + field + suffix] = object.CalcolaDelta(of, budget);
    row["DELTAPERC" + field + suffix] = object.CalcolaDeltaPercentuale(of, budget);
  };
  fill("_CONSUNTIVO", "_CONS");
  for (int n = 1; n <= forecasts; ++n) fill("_FORECAST" + std::to_string(n), "_FORE" + std::to_string(n));
}

void expectRow(const Result& result, const Row& row, const std::map<std::string, Variant>& expected) {
  for (std::size_t i = 0; i < result.values.size(); ++i) {
    const auto& field = result.values[i].field;
    EXPECT_EQ(textOf(result.cell(row, result.columns.size() - 1, i).value), textOf(expected.at(field))) << field;
  }
}

TEST_F(Report, EqualsTheGridsOfAllSitesAndKindsToTheCent) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    RandomBudget budget(company, seed);
    for (const auto& [measure, field] : kMeasures) {
      SCOPED_TRACE(std::to_string(seed) + " " + measure);
      auto grid = gridsOf(budget, field);
      Query query;
      query.rows = {"id"};
      query.values = budget.values();
      query.measure = measure;
      const auto result = bukorval::report::run(budget.object, *budget.db, query);
      ASSERT_EQ(result.rows.size(), grid.size() + 1);
      std::map<std::string, Variant> total;
      for (std::size_t i = 1; i < result.rows.size(); ++i) {
        auto& expected = grid[textOf(result.rows[i].keys[0].code)];
        for (const auto& [name, value] : expected) total[name] = sumOf(total[name], value);
        fillDeltas(budget.object, expected, field, budget.forecasts);
        expectRow(result, result.rows[i], expected);
      }
      if (grid.empty()) continue;
      fillDeltas(budget.object, total, field, budget.forecasts);
      expectRow(result, result.rows[0], total);
    }
  }
}

/// Adds the cells of a row to those of its group.
void addCells(std::vector<Variant>& sums, const Row& row) {
  sums.resize(row.cells.size(), Variant::Null());
  for (std::size_t i = 0; i < sums.size(); ++i) sums[i] = sumOf(sums[i], row.cells[i].value);
}

TEST_F(Report, EveryGroupIsTheSumOfItsRowsAndEveryTotalThatOfTheCards) {
  for (unsigned seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE(seed);
    RandomBudget budget(company, seed);
    Query query, cards;
    query.values = {"budget", "actual", "orders"};
    for (const char* part : {"", ".actual", ".forecast"})
      if (budget.forecasts > 0) query.values.push_back(std::string("forecast1") + part);
    cards.values = query.values;
    auto axes = budget.axes();
    for (auto depth = budget.upTo(3); depth > 0; --depth) {
      const auto at = axes.begin() + static_cast<std::ptrdiff_t>(budget.upTo(axes.size() - 1));
      query.rows.push_back(*at);
      axes.erase(at);
    }
    query.columns = budget.perSite && budget.upTo(2) == 0 ? "site" : "period";
    query.top = static_cast<int>(budget.upTo(2));
    if (budget.upTo(1) == 0) query.sort = "actual";
    const auto result = bukorval::report::run(budget.object, *budget.db, query);
    const auto whole = bukorval::report::run(budget.object, *budget.db, cards);

    const auto figures = result.values.size(), total = (result.columns.size() - 1) * figures;
    for (std::size_t i = 0; i < figures; ++i) {
      EXPECT_EQ(textOf(result.rows[0].cells[total + i].value), textOf(whole.rows[0].cells[i].value));
      if (query.columns != "site") continue;
      Variant across = Variant::Null();
      for (std::size_t at = i; at < total; at += figures) across = sumOf(across, result.rows[0].cells[at].value);
      EXPECT_EQ(textOf(across), textOf(whole.rows[0].cells[i].value));
    }
    std::vector<std::vector<Variant>> sums(query.rows.size() + 1);  // by level, from the last row up
    for (auto row = result.rows.rbegin(); row != result.rows.rend(); ++row) {
      const auto level = row->level();
      for (std::size_t at = 3; at < row->cells.size() && figures > 3; at += figures)
        EXPECT_EQ(textOf(row->cells[at].value), textOf(sumOf(row->cells[at + 1].value, row->cells[at + 2].value)));
      if (level < query.rows.size() && row->others == 0) {
        auto& below = sums[level + 1];
        below.resize(row->cells.size(), Variant::Null());
        for (std::size_t i = 0; i < below.size(); ++i) EXPECT_EQ(textOf(below[i]), textOf(row->cells[i].value));
        below.clear();
      }
      addCells(sums[level], *row);
    }
  }
}

}  // namespace
