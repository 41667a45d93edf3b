#include "dati/Cards.h"
#include "dati/Raise.h"
#include "dati/SmallBudgets.h"
#include "dati/Spread.h"
#include "dati/WrittenPeriods.h"

namespace {

using namespace dati_tests;

struct Weights : SmallBudgets {
  std::string days(const Variant& number) {
    bo.AnnoEsercizio = number;
    dati::PeriodWeights weights;
    const auto failure = failureOf([&] { weights = dati::daysOfPeriods(bo, *db); });
    return failure.empty() ? shown(weights) : failure;
  }
  std::string weightsOf(const Variant& card, int kind, const char* measure = "amount",
                        dati::PeriodRange range = {1, 4}) {
    dati::PeriodWeights weights;
    const auto failure =
        failureOf([&] { weights = dati::amountsAsWeights(bo, *db, card, kind, *dati::findMeasure(measure), range); });
    return failure.empty() ? shown(weights) : failure;
  }
};

TEST_F(Weights, AreTheDaysOfThePeriods) {
  insert(*db, "CG19_ANADITTAESER",
         "CG19_DITTA_CG18=1, CG19_ANNO=2028, CG19_PROGESER=1, CG19_DATAINIZIO='20280101', CG19_DATAFINE='20281231'");
  insert(*db, "CG19_ANADITTAESER",
         "CG19_DITTA_CG18=1, CG19_ANNO=2027, CG19_PROGESER=1, CG19_DATAINIZIO='20270401', CG19_DATAFINE='20270815'");
  insert(*db, "CG19_ANADITTAESER",
         "CG19_DITTA_CG18=1, CG19_ANNO=2029, CG19_PROGESER=1, CG19_DATAINIZIO='20290701', CG19_DATAFINE='20301231'");
  EXPECT_EQ(days(2025), "90,91,92,92");
  EXPECT_EQ(days(2028), "91,91,92,92") << "a leap year";
  EXPECT_EQ(days(2024), "92,92,90,91") << "from July";
  EXPECT_EQ(days(2027), "91,46,0,0") << "a short year that ends amid a month";
  EXPECT_EQ(days(2029), "92,92,90,91") << "of 18 months only 12 are the budget's";
  EXPECT_EQ(days(2031).substr(0, 41), "1 The company has no accounting year 2031");
  bo.SottoTipoBudget = "03";
  EXPECT_EQ(days(2025), "31,28,31,30,31,30,31,31,30,31,30,31");
  EXPECT_EQ(days(2024), "31,31,30,31,30,31,31,28,31,30,31,30");
}

TEST_F(Weights, AreWhatACardHas) {
  const auto own = card("A1"), other = card("B1", "BU65_SOTTOTIPO_BU01='02'"), july = card("D1", "BU65_ANNO=2024"),
             monthly = card("C1", "BU65_SOTTOTIPO_BU01='03'");
  for (const char* text : {"0 1 100.25 1.5", "0 3 0.01", "0 4 NULL 2.125", "1 2 50"}) detail(own, text);
  detail(other, "0 2 7.5");
  EXPECT_EQ(weightsOf(own, 0), "100.25,0,0.01,0");
  EXPECT_EQ(weightsOf(own, 0, "qty1"), "1.500,0,0,2.125");
  EXPECT_EQ(weightsOf(own, 1), "0,50.00,0,0");
  EXPECT_EQ(weightsOf(own, 3), "0,0,0,0");
  EXPECT_EQ(weightsOf(other, 0), "0,7.50,0,0");
  EXPECT_EQ(weightsOf(99999, 0), "1 There is no card 99999");
  for (const auto card : {monthly, july})
    EXPECT_EQ(weightsOf(card, 0), "1 The periods of card " + std::to_string(card) + " are others");
  detail(own, "0 2 -0.01");
  EXPECT_EQ(weightsOf(own, 0),
            "1 Period 2 of card " + std::to_string(own) + " has -0.01: a negative amount is no weight");
  EXPECT_EQ(weightsOf(own, 0, "amount", {3, 4}), "0,0,0.01,0") << "outside the range it does not matter";
}

TEST_F(Weights, LeaveTheSelectionAsItWas) {
  const auto other = card("B1", "BU65_SOTTOTIPO_BU01='02', BU65_ANNO=2024, BU65_CODICE_CG31=2"),
             monthly = card("C1", "BU65_SOTTOTIPO_BU01='03'");
  bo.CodiceSede = 1;
  for (const std::int64_t card : {other, monthly, std::int64_t{99999}}) {
    weightsOf(card, 0);
    EXPECT_EQ(shown(std::vector<Variant>{bo.CodiceDitta, bo.TipoBudget, bo.SottoTipoBudget, bo.AnnoEsercizio,
                                         bo.ProgressivoEsercizio, bo.CodiceSede, bo.BdgTipoScheda}),
              "1,4,01,2025,1,1,0")
        << card;
  }
}

TEST_F(Weights, ComeFromTheCardThatHadTheSameColumnsAYearBefore) {
  const auto before = [&](std::int64_t card) {
    Variant found;
    const auto failure = failureOf([&] { found = dati::cardOfLastYear(bo, *db, card); });
    return failure.empty() ? values::toPlainText(found) : failure;
  };
  const auto now = card("A1"), last = card("A1", "BU65_ANNO=2024, BU65_FLGBUDGET=1"), lonely = card("B1");
  card("A1", "BU65_ANNO=2023");
  card("A1", "BU65_ANNO=2024, BU65_PROGESER=2");
  card("A1", "BU65_ANNO=2024, BU65_SOTTOTIPO_BU01='02'");
  card("B1", "BU65_ANNO=2024, BU65_CONTO_CG24='50010002'");
  card("B1", "BU65_ANNO=2024, BU65_CONTO_CG24=NULL");
  EXPECT_EQ(before(now), std::to_string(last)) << "flags do not count";
  EXPECT_EQ(before(lonely), "1 No card of 2024 has the columns of this one");
  card("A1", "BU65_ANNO=2024, BU65_CODICE_CG31=2");
  EXPECT_EQ(before(now), "1 More than one card of 2024 has the columns of this one") << "the site is no column of it";
  insert(*db, "CG19_ANADITTAESER",
         "CG19_DITTA_CG18=1, CG19_ANNO=2025, CG19_PROGESER=2, CG19_DATAINIZIO='20260101', CG19_DATAFINE='20260630'");
  bo.ProgressivoEsercizio = 2;
  EXPECT_EQ(before(card("A1", "BU65_PROGESER=2")), std::to_string(now)) << "the part of the year before it";
  bo.ProgressivoEsercizio = 1;
  bo.AnnoEsercizio = 2024;
  EXPECT_EQ(before(last), "1 The calendar has no year before the card's");
  bo.AnnoEsercizio = 2031;
  EXPECT_EQ(before(now), "1 The calendar has no year before the card's");
}

struct Periods : SmallBudgets {
  /// The periods written for a range, and the period of each month: "1,2 of 1,1,1,2,…".
  std::string written(const char* from, const char* to) {
    const dati::WrittenPeriods periods(bo, *Date::TryParse(from), *Date::TryParse(to));
    std::vector<int> months;
    for (std::size_t month = 1; month <= 12; ++month) months.push_back(periods.ofMonth(month));
    return shown(periods.all()) + " of " + shown(months);
  }
};

TEST_F(Periods, AreThoseThatARangeOfDatesReaches) {
  const struct {
    int year;
    const char *subtype, *from, *to, *written;
  } kRows[] = {{2025, "01", "20250101", "20251231", "1,2,3,4 of 1,1,1,2,2,2,3,3,3,4,4,4"},
               {2025, "01", "20250331", "20250401", "1,2 of 1,1,1,2,2,2,0,0,0,0,0,0"},
               {2025, "01", "20250501", "20250501", "2 of 0,0,0,2,2,2,0,0,0,0,0,0"},
               {2025, "03", "20250228", "20250331", "2,3 of 0,2,3,0,0,0,0,0,0,0,0,0"},
               {2025, "03", "20241201", "20251130", "11,12 of 0,0,0,0,0,0,0,0,0,0,11,12"},
               {2025, "03", "20241201", "20251201", "1,2,3,4,5,6,7,8,9,10,11,12 of 1,2,3,4,5,6,7,8,9,10,11,12"},
               {2024, "01", "20240701", "20250630", "1,2,3,4 of 3,3,3,4,4,4,1,1,1,2,2,2"},
               {2024, "01", "20241201", "20250101", "2,3 of 3,3,3,0,0,0,0,0,0,2,2,2"},
               {2024, "03", "20240701", "20240731", "1 of 0,0,0,0,0,0,1,0,0,0,0,0"}};
  for (const auto& row : kRows) {
    bo.AnnoEsercizio = row.year;
    bo.SottoTipoBudget = row.subtype;
    EXPECT_EQ(written(row.from, row.to), row.written) << row.from << " " << row.to;
  }
}

TEST_F(Periods, OfAShortYearEndWithIt) {
  insert(*db, "CG19_ANADITTAESER",
         "CG19_DITTA_CG18=1, CG19_ANNO=2027, CG19_PROGESER=1, CG19_DATAINIZIO='20270401', CG19_DATAFINE='20270930'");
  bo.AnnoEsercizio = 2027;
  EXPECT_EQ(written("20270401", "20271231"), "1,2 of 0,0,0,1,1,1,2,2,2,0,0,0");
  EXPECT_EQ(written("20270101", "20281231"), "1,2 of 0,0,0,1,1,1,2,2,2,0,0,0");
}

TEST_F(Periods, ByCalendarMonthsOfAYearAcrossJanuaryAreAllThere) {
  db->Execute("UPDATE BU01_ANABUDGET SET BU01_INDPERFISO = 1");
  bo.AnnoEsercizio = 2024;
  EXPECT_EQ(written("20240701", "20250630"), "2,3 of 0,0,0,2,2,2,3,3,3,0,0,0");
  EXPECT_EQ(written("20240101", "20251231"), "2,3 of 0,0,0,2,2,2,3,3,3,0,0,0");
  EXPECT_EQ(written("20241101", "20250228"), "1,2,3,4 of 1,1,1,2,2,2,3,3,3,4,4,4");
}

TEST_F(Periods, HaveTheNamesThatPeopleKnow) {
  EXPECT_EQ(shown(dati::periodNames(bo)), "1° Trimestre,2° Trimestre,3° Trimestre,4° Trimestre");
  bo.SottoTipoBudget = "03";
  bo.AnnoEsercizio = 2024;
  EXPECT_EQ(dati::periodNames(bo).front() + " " + dati::periodNames(bo).back(), "Luglio Giugno");
  bo.SottoTipoBudget = "99";
  EXPECT_EQ(shown(dati::periodNames(bo)), "");
}

struct Raise : SmallBudgets {
  /// Raises every cell of a kind; how many were written, or the failure.
  std::string raise(const char* percentage, int kind = 0, const char* measure = "amount",
                    const std::set<std::int64_t>& cards = {}) {
    const auto& what = *dati::findMeasure(measure);
    const dati::DetailSnapshot held(*db, {year("01", 2025), kind, bukorval::bdgPdcCoGe, &what});
    std::set<dati::DetailSnapshot::Key> cells;
    for (const auto& [key, amount] : held.amounts())
      if (cards.empty() || cards.contains(key.card)) cells.insert(key);
    int written = 0;
    const auto failure = failureOf([&] {
      written = dati::raiseAmounts(bo, held, cells, kind, what, dati::raisingFactor(*Decimal::TryParse(percentage)));
    });
    return failure.empty() ? std::to_string(written) : failure;
  }
};

TEST_F(Raise, RoundsEachValueHalvesAwayFromZero) {
  const auto a = card("A1"), b = card("B1");
  for (const char* text : {"0 1 100 1.001", "0 2 0.1", "0 3 -0.1", "0 4 NULL", "3 1 100"}) detail(a, text);
  detail(b, "0 1 100");
  EXPECT_EQ(raise("5", 0, "amount", {a}), "3");
  EXPECT_EQ(amounts(a, 0), "1:105.00 2:0.11 3:-0.11 4:") << "0.105 and -0.105";
  EXPECT_EQ(amounts(a, 3), "1:100.00") << "another kind";
  EXPECT_EQ(amounts(b, 0), "1:100.00") << "another card";
  EXPECT_EQ(amounts(a, 0, "BU66_QTA1"), "1:1.001 2: 3: 4:");
  EXPECT_EQ(raise("-50", 0, "qty1"), "1");
  EXPECT_EQ(amounts(a, 0, "BU66_QTA1"), "1:0.501 2: 3: 4:") << "to the thousandth";
  EXPECT_EQ(raise("-100"), "4");
  EXPECT_EQ(amounts(a, 0), "1:0.00 2:0.00 3:0.00 4:");
}

TEST_F(Raise, StopsAtWhatNoLongerFits) {
  const auto a = card("A1");
  detail(a, "0 1 1");
  detail(a, "0 2 9999999999999.99");
  EXPECT_EQ(raise("0"), "2");
  EXPECT_THAT(raise("0.00000000001"), testing::EndsWith("in AggiornaSingoloValoreBU66"))
      << "10000000000000.99 has a digit too many";
  EXPECT_EQ(amounts(a, 0).substr(2, 4), "1.00");
}

TEST_F(Raise, TakesTheCardsOfTheSelection) {
  const auto a = card("A1", "BU65_CODICE_CG31=1"), b = card("B1", "BU65_CODICE_CG31=2"),
             c = card("C1", "BU65_CODICE_CG31=1, BU65_INDCOSRIC_BU07=1");
  card("A1", "BU65_ANNO=2024");
  card("A1", "BU65_SOTTOTIPO_BU01='02'");
  card("A1", "BU65_PROGESER=2");
  card("A1", "BU65_DITTA_CG18=2");
  card("A1", "BU65_INDTIPO_BU01=5");
  using Cards = std::set<std::int64_t>;
  const struct {
    Variant site, kind, from, to;
    Cards cards;
  } kRows[] = {{{}, {}, {}, {}, {a, b, c}}, {1, {}, {}, {}, {a, c}},       {"2", {}, {}, {}, {b}},
               {{}, 0, {}, {}, {a, b}},     {1, 1, {}, {}, {c}},           {{}, {}, "A1", "B1", {a, b}},
               {{}, {}, "A2", {}, {b, c}},  {{}, {}, {}, "B", {a}},        {" ", Variant::Null(), "", "A1", {a}},
               {3, {}, {}, {}, {}},         {{}, {}, "b1", "b1", Cards{b}}};
  for (const auto& row : kRows) {
    bo.CodiceSede = row.site;
    bo.BdgTipoScheda = row.kind;
    bo.DaScheda = row.from;
    bo.AScheda = row.to;
    EXPECT_EQ(dati::selectedCards(bo, *db), row.cards) << &row - kRows;
  }
}

}  // namespace
