#include "dati/CopyDeviation.h"
#include "dati/SmallBudgets.h"

namespace {

using namespace dati_tests;
using bukorval::CLSKORVAL;

/// Cards of 2025 that are copied into 4/02 with a percentage.
struct CopyDeviation : SmallBudgets {
  CopyDeviation() { copyInto("02"); }
  /// "amounts dueDates" that were changed, or the failure.
  std::string copy(const char* percentage) {
    dati::CopyDeviation::Counts counts;
    const auto failure = failureOf([&] {
      dati::Transaction transaction(bo, db);
      dati::WatchedRun run(bo, transaction, {year("02", 2025), bo.TipoDettaglioDestinazione});
      dati::CopyDeviation deviation(bo, run);
      run(&CLSKORVAL::BdgDupSchede_Duplicazione);
      counts = deviation.apply(*Decimal::TryParse(percentage));
      transaction.end(dati::RunMode::Write);
    });
    return failure.empty() ? std::to_string(counts.amounts) + " " + std::to_string(counts.dueDates) : failure;
  }
  std::int64_t copyOf(const char* code) const {
    return std::stoll(
        one("SELECT MIN(BU65_ID) FROM BU65_TESBUDGET WHERE BU65_SOTTOTIPO_BU01 = '02' AND"
            " BU65_SCHEDA_BU07 = '" +
            std::string(code) + "'"));
  }
};

TEST_F(CopyDeviation, RaisesWhatWasCopiedToTheCent) {
  const auto a = card("A1");
  for (const char* text : {"0 1 100", "0 2 0.1", "0 3 -0.1", "0 4 NULL"}) detail(a, text);
  EXPECT_EQ(copy("5"), "3 0");
  EXPECT_EQ(amounts(copyOf("A1"), 0), "1:105.00 2:0.11 3:-0.11 4:");
  EXPECT_EQ(amounts(a, 0), "1:100.00 2:0.10 3:-0.10 4:") << "the source stays";
}

TEST_F(CopyDeviation, LeavesAloneWhatTheCopyLeftAlone) {
  const auto a = card("A1"), there = card("A1", "BU65_SOTTOTIPO_BU01='02'"),
             other = card("Z1", "BU65_SOTTOTIPO_BU01='02'");
  for (const char* text : {"0 1 100", "0 2 200", "0 3 300"}) detail(a, text);
  for (const char* text : {"0 1 100", "0 2 50", "0 3 NULL", "0 4 9"}) detail(there, text);
  detail(other, "0 1 7");
  EXPECT_EQ(copy("10"), "1 0") << "only what was empty, although the first is equal to its source";
  EXPECT_EQ(amounts(there, 0), "1:100.00 2:50.00 3:330.00 4:9.00");
  bo.IsSovrascriviEsistenti = true;
  EXPECT_EQ(copy("10"), "3 0");
  EXPECT_EQ(amounts(there, 0), "1:110.00 2:220.00 3:330.00 4:9.00");
  EXPECT_EQ(amounts(other, 0), "1:7.00");
}

TEST_F(CopyDeviation, TakesTheRangeOfCardsAndTheKinds) {
  const auto a = card("A1"), b = card("B1");
  detail(a, "1 1 100");
  detail(b, "1 1 100");
  const auto outside = card("B1", "BU65_SOTTOTIPO_BU01='02'");
  detail(outside, "3 1 100");
  bo.IsSovrascriviEsistenti = true;
  bo.AScheda = "A9";
  bo.TipoDettaglioOrigine = 1;
  bo.TipoDettaglioDestinazione = 3;
  EXPECT_EQ(copy("-2.5"), "1 0");
  EXPECT_EQ(amounts(copyOf("A1"), 3).substr(0, 7), "1:97.50");
  EXPECT_EQ(one("SELECT COUNT(*) FROM BU65_TESBUDGET WHERE BU65_SOTTOTIPO_BU01 = '02'"), "2");
  EXPECT_EQ(amounts(outside, 3), "1:100.00") << "equal to its source, but not of the range";
}

TEST_F(CopyDeviation, SharesACentOutOverTheDueDatesOfAPeriod) {
  const auto a = card("A1");
  detail(a, "0 1 100");
  insert(*db, "BU67_BDGCASHFLOW",
         "BU67_ID_BU65=" + std::to_string(a) +
             ", BU67_FLGSCADMAN=0, BU67_NUMRATE=3,"
             " BU67_MESIRATA=1, BU67_GIORNISCAD=0");
  const auto dates = [&](std::int64_t card) {
    return shown(list("SELECT BU14_IMPORTO FROM BU14_SCADCFLOW WHERE BU14_IDBUDGET = " + std::to_string(card) +
                      " ORDER BY BU14_ID"));
  };
  for (const char* amount : {"33.33", "33.33", "33.34"})
    insert(*db, "BU14_SCADCFLOW",
           "BU14_IDBUDGET=" + std::to_string(a) +
               ", BU14_PERIODO=1, BU14_DATASCAD='20250331',"
               " BU14_FLGMANUAL=1, BU14_IMPORTO=" +
               std::string(amount));
  bo.IsDuplicaScadenzeCashFlow = bo.IsDuplicaScadenzeManualiCashFlow = true;
  const auto outcome = copy("0.5");
  const auto copied =
      list("SELECT BU14_IMPORTO FROM BU14_SCADCFLOW WHERE BU14_IDBUDGET = " + std::to_string(copyOf("A1")) +
           " ORDER BY BU14_ID");
  EXPECT_EQ(outcome, "1 " + std::to_string(copied.size()));
  ASSERT_EQ(copied.size(), 3U);
  EXPECT_EQ(dates(copyOf("A1")), "33.50,33.50,33.50") << "33.49665 twice, and what is left of 100.50";
  EXPECT_EQ(dates(a), "33.33,33.33,33.34");
  EXPECT_EQ(copy("100"), "0 0") << "what was there before is not the copy's";
  EXPECT_EQ(dates(copyOf("A1")), "33.50,33.50,33.50");
  bo.IsSovrascriviEsistenti = true;
  EXPECT_EQ(copy("100").substr(0, 2), "1 ");
  EXPECT_EQ(amounts(copyOf("A1"), 0).substr(0, 8), "1:200.00");
}

TEST_F(CopyDeviation, RoundsTheDueDatesOfEachPeriodAndCardForThemselves) {
  for (const char* code : {"A1", "B1"}) {
    const auto id = card(code);
    detail(id, "0 1 0.33");
    for (const char* period : {"1", "2"})
      insert(*db, "BU14_SCADCFLOW",
             "BU14_IDBUDGET=" + std::to_string(id) +
                 ", BU14_DATASCAD='20250331', BU14_IMPORTO=0.33, BU14_PERIODO=" + period);
  }
  bo.IsDuplicaScadenzeCashFlow = true;
  EXPECT_EQ(copy("5"), "2 4");
  EXPECT_EQ(shown(list("SELECT BU14_IMPORTO FROM BU14_SCADCFLOW WHERE BU14_IDBUDGET IN (" +
                       std::to_string(copyOf("A1")) + ", " + std::to_string(copyOf("B1")) + ")")),
            "0.35,0.35,0.35,0.35")
      << "0.3465 each; together they would be 1.39";
}

TEST_F(CopyDeviation, TakesNothingBackThatFitsAndAllThatDoesNot) {
  const auto a = card("A1"), b = card("B1");
  detail(a, "0 1 1");
  detail(b, "0 1 9999999999999.99");
  EXPECT_THAT(copy("0.01"), testing::StartsWith("99 "));
  EXPECT_EQ(one("SELECT COUNT(*) FROM BU65_TESBUDGET WHERE BU65_SOTTOTIPO_BU01 = '02'"), "0");
  EXPECT_EQ(copy("-0.01"), "2 0");
  EXPECT_EQ(amounts(copyOf("B1"), 0).substr(0, 18), "1:9998999999999.99");
}

}  // namespace
