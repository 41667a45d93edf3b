#include "dati/Checks.h"
#include "dati/Comparison.h"
#include "dati/DetailSnapshot.h"
#include "dati/SmallBudgets.h"

namespace {

using namespace dati_tests;

struct Comparison : SmallBudgets {
  /// The rows, "key period left right": "-" for no amount, "." for no card.
  std::string rows(const dati::ComparedSide& left, const dati::ComparedSide& right, bool byPeriod = false) {
    std::string text;
    const auto failure = failureOf([&] {
      for (const auto& row : dati::compare(bo, *db, left, right, byPeriod).rows) {
        text +=
            (text.empty() ? "" : "; ") + values::toPlainText(row.key[1]) + "/" + values::toPlainText(row.key.back());
        if (byPeriod) text += " " + std::to_string(row.period);
        text += " " + (row.onLeft ? shown(std::vector<Variant>{row.left}) : ".");
        text += " " + (row.onRight ? shown(std::vector<Variant>{row.right}) : ".");
      }
    });
    return failure.empty() ? text : failure;
  }
};

TEST_F(Comparison, PutsCardsOfOneKeySideBySide) {
  const auto a = card("A1"), b = card("B1"), old = card("A1", "BU65_ANNO=2024"), lone = card("C1", "BU65_ANNO=2024");
  for (const char* text : {"0 1 100.10", "0 2 0.01", "0 4 NULL", "1 1 999"}) detail(a, text);
  detail(old, "0 1 50");
  detail(lone, "1 1 7");
  const dati::ComparedSide now{year("01", 2025), 0}, then{year("01", 2024), 0};
  EXPECT_EQ(rows(now, then), "A1/50010001 100.11 50.00; B1/50010001 - .; C1/50010001 . -");
  EXPECT_EQ(rows(then, now), "A1/50010001 50.00 100.11; B1/50010001 . -; C1/50010001 - .") << "the other way round";
  EXPECT_EQ(rows(now, then, true), "1 These two budgets have different periods: only their years can be compared")
      << "quarters from January and from July";
  detail(card("A1", "BU65_SOTTOTIPO_BU01='02'"), "0 1 50");
  const dati::ComparedSide other{year("02", 2025), 0};
  EXPECT_EQ(rows(now, other, true), "A1/50010001 1 100.10 50.00; A1/50010001 2 0.01 -")
      << "without an amount there is nothing to show";
  EXPECT_EQ(rows(now, {year("01", 2025), 1}), "A1/50010001 100.11 999.00; B1/50010001 - -") << "kinds of one year";
  EXPECT_EQ(rows(now, {year("01", 2031), 0}), "A1/50010001 100.11 .; B1/50010001 - .");
  detail(b, "0 3 -1");
  EXPECT_EQ(rows(now, other, true), "A1/50010001 1 100.10 50.00; A1/50010001 2 0.01 -; B1/50010001 3 -1.00 .");
}

TEST_F(Comparison, AddsUpTheCardsOfOneKey) {
  detail(card("a1"), "0 1 1.5");
  detail(card("A1", "BU65_CODICE_CG31=2"), "0 1 2.25");
  detail(card("A1", "BU65_CONTO_CG24='50010002'"), "0 1 4");
  detail(card("A1", "BU65_CONTO_CG24=NULL, BU65_GRUPPO_CG10=NULL"), "0 2 8");
  const dati::ComparedSide side{year("01", 2025), 0};
  EXPECT_EQ(rows(side, side), "A1/ 8.00 8.00; A1/50010001 3.75 3.75; A1/50010002 4.00 4.00");
}

TEST_F(Comparison, CountsTheActualValueInAForecast) {
  const auto a = card("A1");
  for (const char* text : {"3 1 10", "1 1 11", "3 2 20", "1 2 NULL", "1 3 33", "3 4 NULL", "1 4 44", "4 1 5"})
    detail(a, text);
  const dati::ComparedSide forecast{year("01", 2025), 3}, actual{year("01", 2025), 1}, second{year("01", 2025), 4};
  EXPECT_EQ(rows(forecast, actual), "A1/50010001 75.00 88.00") << "11, 20 and 44; period 3 was never forecast";
  EXPECT_EQ(rows(forecast, second, true), "A1/50010001 1 11.00 11.00; A1/50010001 2 20.00 -; A1/50010001 4 44.00 -");
}

TEST_F(Comparison, AddsUpDetailsThatStandTwiceAsTheGridDoes) {
  db->Execute("DROP INDEX UX_BU66_DETTAGLIO ON BU66_DETBUDGET");  // as in a database made before it
  const auto a = card("A1");
  for (const char* text : {"0 1 1.5", "0 1 2.25", "3 2 4", "1 2 8", "1 2 16"}) detail(a, text);
  EXPECT_EQ(rows({year("01", 2025), 0}, {year("01", 2025), 3}), "A1/50010001 3.75 24.00");
}

TEST_F(Comparison, NeedsTheSamePeriodsAndAColumnInCommon) {
  card("A1");
  const dati::ComparedSide quarters{year("01", 2025), 0}, months{year("03", 2025), 0};
  EXPECT_EQ(rows(quarters, months, true),
            "1 These two budgets have different periods: only their years can be compared");
  EXPECT_EQ(rows(quarters, months), "A1/50010001 - .");
  insert(*db, "BU01_ANABUDGET", "BU01_INDTIPO=0, BU01_SOTTOTIPO='A', BU01_STRUTTURA='ARE', BU01_INDPERIODO=2");
  EXPECT_EQ(rows(quarters, {{1, 0, "A", 2025, 1}, 0}), "1 The cards of these two budgets have no column in common");
}

TEST_F(Comparison, SortsNumbersAsNumbers) {
  for (const char* site : {"10", "9", "2"})
    card("A1", "BU65_SOTTOTIPO_BU01='04', BU65_CODICE_CG31=" + std::string(site));
  std::vector<Variant> sites;
  for (const auto& row : dati::compare(bo, *db, {year("04", 2025), 0}, {year("04", 2025), 0}, false).rows)
    sites.push_back(row.key.front());
  EXPECT_EQ(shown(sites), "2,9,10");
}

struct Snapshot : SmallBudgets {
  dati::DetailSnapshot take(int kind = 0, const char* measure = "amount") {
    return {*db, {year("01", 2025), kind, bukorval::bdgPdcCoGe, dati::findMeasure(measure)}};
  }
};

TEST_F(Snapshot, HoldsOneKindOfOneBudget) {
  const auto a = card("A1", "BU65_CODICE_CG31=2"), empty = card("B1");
  detail(card("A1", "BU65_ANNO=2024"), "0 1 9");
  for (const char* text : {"0 1 100 1.5", "0 2 NULL", "1 1 7"}) detail(a, text);
  const auto snapshot = take();
  EXPECT_EQ(snapshot.cards().size(), 2U);
  EXPECT_EQ(shown(std::vector<Variant>{snapshot.cards().at(a).site, snapshot.cards().at(a).code,
                                       snapshot.cards().at(a).account}),
            "2,A1,50010001");
  EXPECT_EQ(snapshot.amounts().size(), 2U);
  EXPECT_EQ(snapshot.amount({a, 1}), Variant(*Decimal::TryParse("100.00")));
  EXPECT_TRUE(snapshot.amount({a, 2}).isNull());
  EXPECT_TRUE(snapshot.amount({empty, 1}).isNull());
  EXPECT_EQ(take(1).amount({a, 1}), Variant(*Decimal::TryParse("7.00")));
  EXPECT_EQ(take(0, "qty1").amount({a, 1}), Variant(*Decimal::TryParse("1.500")));
}

TEST_F(Snapshot, TellsWhatHasChangedSinceAnother) {
  const auto a = card("A1"), b = card("B1");
  for (const char* text : {"0 1 100", "0 2 NULL", "0 3 0", "0 4 5"}) detail(a, text);
  detail(b, "0 2 1");
  const auto before = take();
  EXPECT_TRUE(dati::amountChanges(before, take()).empty());
  for (const char* sql : {"UPDATE BU66_DETBUDGET SET BU66_IMPORTO = 100.01 WHERE BU66_PERIODO = 1",
                          "UPDATE BU66_DETBUDGET SET BU66_IMPORTO = 0 WHERE BU66_PERIODO = 2 AND BU66_IMPORTO IS NULL",
                          "UPDATE BU66_DETBUDGET SET BU66_IMPORTO = NULL WHERE BU66_PERIODO = 3",
                          "DELETE FROM BU66_DETBUDGET WHERE BU66_PERIODO = 4"})
    db->Execute(sql);
  const auto added = card("C1");
  detail(added, "0 1 3");
  detail(added, "0 2 NULL");
  std::string changes;
  for (const auto& change : dati::amountChanges(before, take()))
    changes += values::toPlainText(change.card.code) + " " + std::to_string(change.key.period) + " " +
               shown(std::vector<Variant>{change.before, change.after}) + "; ";
  EXPECT_EQ(changes, "A1 1 100.00,100.01; A1 2 -,0.00; A1 3 0.00,-; A1 4 5.00,-; C1 1 -,3.00; ");
}

struct Checks : SmallBudgets {
  /// What is found, "table: what 2 example; …".
  std::string found() {
    std::string text;
    for (const auto& result : dati::checkRows(*db))
      if (result.findings > 0)
        text += result.check + " " + std::to_string(result.findings) + " " + result.example + "; ";
    return text;
  }
};

TEST_F(Checks, FindWhatHangsOnNothing) {
  const auto a = card("A1"), b = card("B1");
  detail(a, "0 1 1");
  detail(b, "0 1 1");
  EXPECT_EQ(found(), "");
  EXPECT_EQ(dati::checkRows(*db).size(), 8U);
  detail(900, "0 1 1");
  detail(800, "0 1 1");
  insert(*db, "BU67_BDGCASHFLOW", "BU67_ID_BU65=901");
  insert(*db, "BU14_SCADCFLOW", "BU14_IDBUDGET=902");
  insert(*db, "BU90_TABPERCBUD", "BU90_DITTA_CG18=1, BU90_INDTIPO_BU01=4, BU90_SOTTOTIPO_BU01='01', BU90_IDBUDGET=903");
  insert(*db, "BU63_DETMASTRI", "BU63_ID_BU65=904");
  EXPECT_EQ(found(),
            "BU66_DETBUDGET: rows without a card 2 BU66_ID_BU65 800; "
            "BU67_BDGCASHFLOW: rows without a card 1 BU67_ID_BU65 901; "
            "BU14_SCADCFLOW: rows without a card 1 BU14_IDBUDGET 902; "
            "BU90_TABPERCBUD: rows without a card 1 BU90_IDBUDGET 903; "
            "BU63_DETMASTRI: rows without a card 1 BU63_ID_BU65 904; ");
}

TEST_F(Checks, FindCardsThatLackSomethingAndDetailsThatStandTwice) {
  const auto a = card("A1"), b = card("B1"), bare = card("C1"), other = card("D1", "BU65_ANNO=2024");
  for (const auto each : {a, b, other}) detail(each, "0 1 1");
  EXPECT_EQ(found(), "BU65_TESBUDGET: cards without details 1 BU65_ID " + std::to_string(bare) + "; ");
  detail(bare, "1 1 1");
  insert(*db, "BU67_BDGCASHFLOW", "BU67_ID_BU65=" + std::to_string(b));
  EXPECT_EQ(found(), "BU65_TESBUDGET: cards without terms where others have them 2 BU65_ID " + std::to_string(a) + "; ")
      << "none in 2024 has any";
  db->Execute("DROP INDEX UX_BU66_DETTAGLIO ON BU66_DETBUDGET");  // as in a database made before it
  for (const auto each : {a, bare}) insert(*db, "BU67_BDGCASHFLOW", "BU67_ID_BU65=" + std::to_string(each));
  for (const char* text : {"2 1 1", "2 1 2", "0 2 1", "3 1 1"}) detail(a, text);
  EXPECT_EQ(found(), "") << "orders may stand several times";
  const auto again = detail(a, "3 1 1");
  detail(b, "0 1 NULL");
  EXPECT_EQ(found(), "BU66_DETBUDGET: details that stand twice 2 BU66_ID " + again + "; ");
}

TEST_F(Checks, FindGridsThatLackCards) {
  const auto a = card("A1");
  detail(a, "0 1 100.25");
  detail(a, "1 1 3");
  detail(card("B1", "BU65_INDCOSRIC_BU07=1"), "0 4 -0.01");
  detail(card("A1", "BU65_SOTTOTIPO_BU01='04', BU65_CODICE_CG31=2"), "0 1 5");
  detail(card("A1", "BU65_DITTA_CG18=2, BU65_CODICE_CG31=1"), "0 1 5");
  const auto grids = [&] {
    const auto result = dati::checkGrids(bo, *db);
    return std::to_string(result.findings) + " " + result.example;
  };
  EXPECT_EQ(grids(), "0 ");
  // No grid of a budget by site shows a card without one, none of the general expenses one without its kind.
  detail(card("B1", "BU65_SOTTOTIPO_BU01='04'"), "0 1 1.5");
  EXPECT_EQ(grids(), "1 budget 4 04 of 2025: IMP_BUDGET 5.00, details 6.50");
  detail(card("C1", "BU65_INDCOSRIC_BU07=NULL"), "1 1 0.01");
  EXPECT_EQ(grids(), "2 budget 4 01 of 2025: IMP_CONSUNTIVO 3.00, details 3.01");
}

}  // namespace
