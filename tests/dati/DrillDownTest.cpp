#include "dati/DrillDown.h"
#include "dati/Ledger.h"
#include "dati/SmallBudgets.h"

namespace {

using namespace dati_tests;

/// A cost card on account 50010001 of 4/01 and its movements of 2025.
struct DrillDown : SmallBudgets {
  std::int64_t a = card("A1");

  DrillDown() {
    insert(*db, "BU67_BDGCASHFLOW", "BU67_ID_BU65=" + std::to_string(a));
    bo.TipoMovimenti = "CG41_INDTIPOMOV <> 2";
    bo.TipoDettaglioDestinazione = 1;
  }
  dati::DrillDown drill(std::optional<int> period = std::nullopt, bool excluded = false,
                        std::vector<std::pair<Date, Date>> ranges = {
                            {Date::FromYmd(2025, 1, 1), Date::FromYmd(2025, 12, 31)}}) {
    return dati::drillDown(bo, *db, *dati::findElaboratedCard(*db, a), {std::move(ranges), period, excluded});
  }
  /// "number amount share days" of each movement, with the reason of one that is left out.
  static std::string shownMovements(const std::vector<dati::CellMovement>& movements) {
    std::string text;
    for (const auto& each : movements) {
      text += (text.empty() ? "" : "; ") + values::toPlainText(each.row.registration) + " " + each.amount.toString() +
              " " + each.share.toString() + " " + std::to_string(each.days);
      if (each.reason) text += " " + std::string(dati::textOf(*each.reason));
    }
    return text;
  }
  /// "period lines movements percentages held" of each cell.
  static std::string shownCells(const dati::DrillDown& found) {
    std::string text;
    for (const auto& cell : found.cells)
      text += (text.empty() ? "" : "; ") + std::to_string(cell.period) + " " + std::to_string(cell.lines) + " " +
              cell.movements.toString() + " " + cell.percentages.toString() + " " +
              shown(std::vector<Variant>{cell.held});
    return text;
  }
  /// What an elaboration writes, to be compared with the cells: "1:… 2:…".
  std::string elaborated() {
    bo.DaData = Date::FromYmd(2025, 1, 1);
    bo.AData = Date::FromYmd(2025, 12, 31);
    bo.BdgElaSchede_Elaborazione();
    EXPECT_EQ(bo.errore(), "");
    return amounts(a, 1);
  }
  std::string totals(const dati::DrillDown& found) const {
    std::string text;
    for (const auto& cell : found.cells)
      text += (text.empty() ? "" : " ") + std::to_string(cell.period) + ":" + cell.total().rounded(2).toString();
    return text;
  }
};

TEST_F(DrillDown, ShowsTheLinesOfACellAndWhatTheyMake) {
  book("20250115", "100.10");
  book("20250331", "30", "CG42_INDDAAV=2");
  book("20250401", "7");
  detail(a, "1 1 70.10");
  const auto first = drill(1);
  EXPECT_EQ(shownMovements(first.movements), "1 100.10 100.10 0; 2 -30.00 -30.00 0");
  EXPECT_EQ(shownCells(first), "1 2 70.10 0.00 70.10");
  EXPECT_TRUE(first.excluded.empty());
  EXPECT_EQ(shownCells(drill()), "1 2 70.10 0.00 70.10; 2 1 7.00 0.00 -; 3 0 0 0 -; 4 0 0 0 -");
  EXPECT_EQ(totals(drill()), "1:70.10 2:7.00 3:0 4:0");
  EXPECT_EQ(elaborated(), "1:70.10 2:7.00 3:0.00 4:0.00");
}

TEST_F(DrillDown, OfARevenueCardCountsDebitsNegative) {
  db->Execute("UPDATE BU65_TESBUDGET SET BU65_INDCOSRIC_BU07 = 1");
  bo.BdgTipoScheda = 1;
  book("20250115", "100");
  book("20250116", "30", "CG42_INDDAAV=2");
  EXPECT_EQ(shownMovements(drill(1).movements), "1 -100.00 -100.00 0; 2 30.00 30.00 0");
  EXPECT_EQ(elaborated(), "1:-70.00 2:0.00 3:0.00 4:0.00");
}

TEST_F(DrillDown, AppliesShareThenDeviationAndRoundsEach) {
  book("20250115", "0.33");
  book("20250415", "10");
  bo.IsApplicaPercentuali = true;
  insert(*db, "BU90_TABPERCBUD",
         "BU90_DITTA_CG18=1, BU90_INDTIPO_BU01=4, BU90_SOTTOTIPO_BU01='01', BU90_PERCRIP=50,"
         " BU90_PERCSCO=-50, BU90_IDBUDGET=" +
             std::to_string(a));
  const auto found = drill();
  EXPECT_EQ(totals(found), "1:0.09 2:2.50 3:0.00 4:0.00") << "0.165 is 0.17, 0.085 is 0.09";
  EXPECT_EQ(elaborated(), "1:0.09 2:2.50 3:0.00 4:0.00");
  bo.IsApplicaPercentuali = false;
  EXPECT_EQ(totals(drill()), "1:0.33 2:10.00 3:0 4:0");
}

TEST_F(DrillDown, SpreadsCompetenceByDaysAndTellsWhereTheRestIs) {
  bo.TipoDataMovimenti = 1;
  book("20250110", "365", "CG42_DATAINICOMP='20250101', CG42_DATAFINCOMP='20251231'");
  book("20250110", "61", "CG42_DATAINICOMP='20250301', CG42_DATAFINCOMP='20250430'");
  const auto first = drill(1);
  EXPECT_EQ(shownMovements(first.movements), "1 365.00 90.00 90; 2 61.00 31.00 31");
  std::string rest;
  for (const auto& [period, amount] : first.movements.front().rest)
    rest += std::to_string(period) + ":" + amount.toString() + " ";
  EXPECT_EQ(rest, "2:91.00 3:92.00 4:92.00 ");
  EXPECT_EQ(shownCells(first), "1 2 121.00 0.00 -") << "two lines, whatever their months";
  EXPECT_EQ(totals(drill()), "1:121.00 2:121.00 3:92.00 4:92.00");
  EXPECT_EQ(elaborated(), "1:121.00 2:121.00 3:92.00 4:92.00");
}

TEST_F(DrillDown, JoinsTheRangesOfAnElaboration) {
  bo.TipoDataMovimenti = 1;
  book("20250110", "365", "CG42_DATAINICOMP='20250101', CG42_DATAFINCOMP='20251231'");
  book("20250520", "5");
  const auto found = drill(std::nullopt, true,
                           {{Date::FromYmd(2025, 1, 1), Date::FromYmd(2025, 3, 31)},
                            {Date::FromYmd(2025, 4, 1), Date::FromYmd(2025, 6, 30)}});
  EXPECT_EQ(shownMovements(found.movements), "1 365.00 181.00 181; 2 5.00 5.00 0");
  EXPECT_TRUE(found.excluded.empty()) << "no range leaves out what another has";
  EXPECT_EQ(found.written, (std::vector<int>{1, 2}));
  std::string rest;
  for (const auto& [period, amount] : found.movements.front().rest)
    rest += std::to_string(period) + ":" + amount.toString() + " ";
  EXPECT_EQ(rest, "3:92.00 4:92.00 ");
}

TEST_F(DrillDown, SaysWhyALineIsLeftOut) {
  bo.IsSoloMovCliFor = true;
  db->Execute("UPDATE BU67_BDGCASHFLOW SET BU67_CLIFOR_CG44 = 77");
  const std::string party = "CG41_TIPOCF_CG44=1, CG41_CLIFOR_CG44=77";
  book("20250115", "1", party);
  book("20250115", "2", party + ", CG41_INDPROVREG=1");
  book("20250115", "3", party + ", CG41_ANNO_CG19=2024");
  book("20250115", "4", party + ", CG42_CODICE_CG33='150'");
  book("20250115", "5", party + ", CG41_INDTIPOMOV=2");
  book("20250115", "6", "CG41_TIPOCF_CG44=0, CG41_CLIFOR_CG44=77");
  book("20250115", "7", "CG41_TIPOCF_CG44=1, CG41_CLIFOR_CG44=78");
  book("20250115", "8", party + ", CG42_CONTOPAR_CG24='50010002'");
  book("20250415", "9", party);
  const auto found = drill(1, true);
  EXPECT_EQ(shownMovements(found.movements), "1 1.00 1.00 0");
  EXPECT_EQ(shownMovements(found.excluded),
            "2 2.00 2.00 0 simulated; 3 3.00 3.00 0 other accounting year; 4 4.00 4.00 0 excluded by code; "
            "5 5.00 5.00 0 forecast; 6 6.00 6.00 0 other party; 7 7.00 7.00 0 other party");
  EXPECT_EQ(shownMovements(drill(1).movements), "1 1.00 1.00 0") << "without what is left out, the same";
  bo.TipoMovimenti = "CG41_INDTIPOMOV = 1";
  EXPECT_EQ(shownMovements(drill(1, true).excluded).substr(0, 36), "1 1.00 1.00 0 other kind of movement");
}

TEST_F(DrillDown, KeepsToTheSiteOfACardThatHasOne) {
  db->Execute("UPDATE BU65_TESBUDGET SET BU65_SOTTOTIPO_BU01 = '04', BU65_CODICE_CG31 = 2");
  bo.SottoTipoBudget = "04";
  book("20250115", "1", "CG41_CODICE_CG31=2");
  book("20250115", "2", "CG41_CODICE_CG31=1");
  book("20250115", "4");
  EXPECT_EQ(shownMovements(drill().movements), "1 1.00 1.00 0");
  EXPECT_EQ(shownMovements(drill(std::nullopt, true).excluded), "2 2.00 2.00 0 other site; 3 4.00 4.00 0 no site");
}

TEST_F(DrillDown, RefusesWhatIsNotElaborated) {
  const std::pair<Date, Date> spring{Date::FromYmd(2025, 4, 1), Date::FromYmd(2025, 9, 30)};
  EXPECT_EQ(failureOf([&] { drill(1, false, {spring}); }), "1 The dates do not reach period 1; they reach 2, 3");
  EXPECT_EQ(failureOf([&] { drill(2, false, {spring}); }), "");
  EXPECT_TRUE(drill(2, false, {spring}).cells.empty()) << "a card without movements is left untouched";
  EXPECT_EQ(failureOf([&] { drill(1, false, {}); }), "1 The dates do not reach period 1; they reach none");
  EXPECT_FALSE(dati::findElaboratedCard(*db, a + 1));
  EXPECT_FALSE(dati::findElaboratedCard(*db, card("B1"))) << "no terms";
  db->Execute("UPDATE BU65_TESBUDGET SET BU65_CONTO_CG24 = NULL");
  EXPECT_EQ(failureOf([&] { drill(1); }), "1 There is no account whose movements could be shown");
}

}  // namespace
