// The card elaboration on a small company: which cards, which periods, what is written.

#include "object/SmallBudgets.h"
#include "support/FaultConnection.h"

namespace {

using namespace bukorval;
using namespace object_tests;
using testing::ElementsAre;

/// Actuals of general expenses from the movements of 2025, by quarters.
struct ElaborazioneSchede : SmallBudgets {
  ElaborazioneSchede() {
    bo.TipoDettaglioDestinazione = 1;
    dates("20250101", "20251231");
    bo.eventi.BeginProcess = [this](Variant& text, Variant& steps) {
      events.push_back(values::toPlainText(text) + " " + values::toPlainText(steps));
    };
    bo.eventi.StepProcess = [this](Variant& step) { events.push_back(values::toPlainText(step)); };
    bo.eventi.EndProcess = [this] { events.push_back("end"); };
  }
  void dates(const char* from, const char* to) {
    bo.DaData = *Date::TryParse(from);
    bo.AData = *Date::TryParse(to);
  }
  /// A card that the elaboration takes: one with terms.
  std::int64_t cardWithTerms(const std::string& code, const std::string& columns = "BU65_ANNO=2025") {
    const auto id = card(code, columns);
    insert(*db, "BU67_BDGCASHFLOW", "BU67_ID_BU65=" + std::to_string(id));
    return id;
  }
  /// The outcome of a run, "0 ".
  std::string run() {
    events.clear();
    session->messages.clear();
    bo.BdgElaSchede_Elaborazione();
    return std::to_string(bo.Stato()) + " " + bo.errore();
  }
  std::vector<std::string> events;
};

TEST_F(ElaborazioneSchede, WritesThePeriodsOfTheDatesAndNoOther) {
  const auto a = cardWithTerms("A1");
  for (const char* text : {"1 1 1", "1 2 2", "1 3 3", "0 2 9"}) detail(a, text);
  for (const char* day : {"20250331", "20250401", "20250531", "20250630", "20250930", "20251001"}) book(day, "10");
  dates("20250401", "20250630");
  EXPECT_EQ(run(), "0 ");
  EXPECT_EQ(amounts(a, 1), "1:1.00 2:30.00 3:3.00 4:") << "the missing row is made, without an amount";
  EXPECT_EQ(amounts(a, 0), "2:9.00") << "another kind";
  dates("20250515", "20250710");
  EXPECT_EQ(run(), "0 ");
  EXPECT_EQ(amounts(a, 1), "1:1.00 2:20.00 3:0.00 4:") << "without a movement in it a period gets 0";
  dates("20250101", "20251130");
  EXPECT_EQ(run(), "0 ");
  EXPECT_EQ(amounts(a, 1), "1:10.00 2:30.00 3:10.00 4:10.00");
}

TEST_F(ElaborazioneSchede, LeavesACardWithoutMovementsUntouched) {
  const auto a = cardWithTerms("A1"), lone = cardWithTerms("B1", "BU65_CONTO_CG24='50010002'"),
             none = cardWithTerms("C1", "BU65_CONTO_CG24=NULL"), blank = cardWithTerms("D1", "BU65_CONTO_CG24=' '");
  for (const auto each : {a, lone, none, blank}) detail(each, "1 1 5");
  book("20250115", "10");
  book("20240715", "10", "CG41_ANNO_CG19=2024, CG42_CONTOPAR_CG24='50010002'");
  EXPECT_EQ(run(), "0 ");
  EXPECT_EQ(amounts(a, 1), "1:10.00 2:0.00 3:0.00 4:0.00");
  for (const auto each : {lone, none, blank}) EXPECT_EQ(amounts(each, 1), "1:5.00") << each;
  EXPECT_THAT(events, ElementsAre("Elaborazione schede spese generali 4", "1", "2", "3", "4", "end"));
  EXPECT_THAT(session->messages, ElementsAre());
}

TEST_F(ElaborazioneSchede, TakesTheCardsOfTheBudgetThatHaveTerms) {
  const auto a = cardWithTerms("A1");
  const std::vector<std::int64_t> others = {card("B1"),
                                            cardWithTerms("C1", "BU65_ANNO=2024"),
                                            cardWithTerms("D1", "BU65_PROGESER=2"),
                                            cardWithTerms("E1", "BU65_SOTTOTIPO_BU01='02'"),
                                            cardWithTerms("F1", "BU65_INDTIPO_BU01=5"),
                                            cardWithTerms("G1", "BU65_DITTA_CG18=2"),
                                            cardWithTerms("H1", "BU65_INDCOSRIC_BU07=1"),
                                            cardWithTerms("I1", "BU65_INDCOSRIC_BU07=NULL")};
  book("20250115", "10");
  EXPECT_EQ(run(), "0 ");
  EXPECT_EQ(amounts(a, 1).substr(0, 7), "1:10.00");
  for (const auto other : others) EXPECT_EQ(amounts(other, 1), "") << other;
  EXPECT_EQ(bo.RstBdgSchedeDaElaborare->RecordCount(), 1);
}

TEST_F(ElaborazioneSchede, CompletesAnOpenRangeOfCards) {
  std::map<std::string, std::int64_t> cards;
  for (const char* code : {"A1", "B1", "B2", "C1"}) cards[code] = cardWithTerms(code);
  book("20250115", "10");
  const struct {
    Variant from, to;
    const char *taken, *left;
  } kRows[] = {{"B1", "B2", "B1,B2", "B1,B2"},
               {"B1", "B1", "B1", "B1,B1"},
               {"B", "B", "", "B,B"},
               {"", "B1", "A1,B1", " ,B1"},
               {"B2", Variant::Null(), "B2,C1", "B2,Z"},
               {{}, {}, "A1,B1,B2,C1", " ,Z"},
               {"  ", "  ", "A1,B1,B2,C1", " ,Z"},
               {"C", "A", "", "C,A"}};
  for (const auto& row : kRows) {
    db->Execute("DELETE FROM BU66_DETBUDGET");
    bo.DaScheda = row.from;
    bo.AScheda = row.to;
    EXPECT_EQ(run(), "0 ");
    std::vector<std::string> taken;
    for (const auto& [code, id] : cards)
      if (!amounts(id, 1).empty()) taken.push_back(code);
    EXPECT_EQ(shown(taken), row.taken) << row.left;
    EXPECT_EQ(shown(std::vector<Variant>{bo.DaScheda, bo.AScheda}), row.left);
    EXPECT_EQ(bo.RstBdgSchedeDaElaborare == nullptr, std::string_view(row.taken).empty());
  }
  EXPECT_EQ(bo.TipoElaborazioneBO, Variant(40)) << "which was empty";
}

TEST_F(ElaborazioneSchede, GoesThroughTheSitesAndSaysWhichHasNoCards) {
  bo.SottoTipoBudget = "04";
  const auto one = cardWithTerms("A1", "BU65_SOTTOTIPO_BU01='04', BU65_CODICE_CG31=1"),
             two = cardWithTerms("A1", "BU65_SOTTOTIPO_BU01='04', BU65_CODICE_CG31=2");
  book("20250115", "10", "CG41_CODICE_CG31=1");
  book("20250115", "20", "CG41_CODICE_CG31=2");
  book("20250115", "40");
  bo.ElencoSedi = std::make_shared<ado::Dictionary>();
  EXPECT_EQ(run(), "0 ") << "no site, no pass";
  EXPECT_EQ(amounts(one, 1) + amounts(two, 1), "");
  for (const int site : {2, 3, 1}) bo.ElencoSedi->Add(site, "sede");
  EXPECT_EQ(run(), "0 ");
  EXPECT_EQ(amounts(one, 1), "1:10.00 2:0.00 3:0.00 4:0.00");
  EXPECT_EQ(amounts(two, 1), "1:20.00 2:0.00 3:0.00 4:0.00");
  EXPECT_THAT(events, ElementsAre("Elaborazione schede spese generali - sede 2 1", "1", "end",
                                  "Elaborazione schede spese generali - sede 1 1", "1", "end"));
  EXPECT_THAT(session->messages,
              ElementsAre("48 Elaborazione schede spese generali: In base ai parametri impostati \r\n"
                          "non sono presenti schede da elaborare per la sede 3"));
  EXPECT_EQ(bo.CodiceSede, Variant(1)) << "the site of the last pass";
  bo.RstBdgSchedeDaElaborare->MoveFirst();
  EXPECT_EQ((*bo.RstBdgSchedeDaElaborare)["BU65_CODICE_CG31"].Value(), Variant(Decimal::FromScaled(1)));
  bo.ElencoSedi = nullptr;
  EXPECT_EQ(run().substr(0, 2), "99");
}

TEST_F(ElaborazioneSchede, SaysThatThereAreNoCardsAndSucceeds) {
  book("20250115", "10");
  EXPECT_EQ(run(), "0 ");
  EXPECT_THAT(session->messages,
              ElementsAre("48 Elaborazione schede spese generali: In base ai parametri impostati \r\n"
                          "non sono presenti schede da elaborare!"));
  EXPECT_EQ(bo.RstBdgSchedeDaElaborare, nullptr);
  EXPECT_THAT(events, ElementsAre());
}

TEST_F(ElaborazioneSchede, FallsBackToTheWholeYearForMoreThanTwelveMonths) {
  const auto a = cardWithTerms("A1");
  book("20250115", "1");
  book("20250210", "2");
  const struct {
    const char *from, *to, *written;
  } kRows[] = {{"20250101", "20251231", "1:3.00 2:0.00 3:0.00 4:0.00"},
               // Twelve months from quarter to quarter: only the one in which they begin and end.
               {"20241215", "20251114", "1:7.00 2:7.00 3:7.00 4:0.00"},
               {"20250201", "20260131", "1:2.00 2:7.00 3:7.00 4:7.00"},
               {"20241201", "20251201", "1:3.00 2:0.00 3:0.00 4:0.00"},
               {"20250120", "20260101", "1:2.00 2:0.00 3:0.00 4:0.00"}};
  for (const auto& row : kRows) {
    db->Execute("DELETE FROM BU66_DETBUDGET");
    for (const char* text : {"1 1 7", "1 2 7", "1 3 7", "1 4 7"}) detail(a, text);
    dates(row.from, row.to);
    EXPECT_EQ(run(), "0 ");
    EXPECT_EQ(amounts(a, 1), row.written) << row.from;
  }
}

TEST_F(ElaborazioneSchede, AppliesTheFirstPercentagesOfTheCardOnRequest) {
  const auto a = cardWithTerms("A1"), b = cardWithTerms("B1"), c = cardWithTerms("C1"), d = cardWithTerms("D1");
  const auto percentages = [&](std::int64_t card, const std::string& columns) {
    insert(*db, "BU90_TABPERCBUD",
           "BU90_DITTA_CG18=1, BU90_INDTIPO_BU01=4, BU90_SOTTOTIPO_BU01='01', BU90_IDBUDGET=" + std::to_string(card) +
               ", " + columns);
  };
  percentages(a, "BU90_PROGR=1, BU90_PERCRIP=33.33, BU90_PERCSCO=10");
  percentages(a, "BU90_PROGR=2, BU90_PERCRIP=50");
  percentages(b, "BU90_PERCSCO=-50");
  percentages(c, "BU90_PERCRIP=0");
  percentages(d, "BU90_SOTTOTIPO_BU01='02', BU90_PERCRIP=50");
  book("20250115", "0.05");
  book("20250415", "-10");
  bo.IsApplicaPercentuali = true;
  EXPECT_EQ(run(), "0 ");
  EXPECT_EQ(amounts(a, 1), "1:0.02 2:-3.66 3:0.00 4:0.00") << "0.016665 is 0.02, then 0.022; -3.333 is -3.33, -3.663";
  EXPECT_EQ(amounts(b, 1), "1:0.03 2:-5.00 3:0.00 4:0.00") << "without a share only the deviation";
  EXPECT_EQ(amounts(c, 1), "1:0.00 2:0.00 3:0.00 4:0.00");
  EXPECT_EQ(amounts(d, 1), "1:0.05 2:-10.00 3:0.00 4:0.00") << "another budget's percentages";
  bo.IsApplicaPercentuali = false;
  db->Execute("DROP TABLE BU90_TABPERCBUD");  // which is not read then
  EXPECT_EQ(run(), "0 ");
  EXPECT_EQ(amounts(a, 1), "1:0.05 2:-10.00 3:0.00 4:0.00");
}

TEST_F(ElaborazioneSchede, SelectsMovementsByTheirRegistration) {
  const auto a = cardWithTerms("A1");
  db->Execute("UPDATE BU67_BDGCASHFLOW SET BU67_CLIFOR_CG44 = 77");
  const auto total = [&] {
    db->Execute("DELETE FROM BU66_DETBUDGET");
    EXPECT_EQ(run(), "0 ");
    const auto text = amounts(a, 1);
    return text.substr(0, text.find(' '));
  };
  book("20250101", "1", "CG41_TIPOCF_CG44=1, CG41_CLIFOR_CG44=77");
  book("20250331", "2", "CG41_TIPOCF_CG44=0, CG41_CLIFOR_CG44=77");
  book("20250115", "4", "CG41_INDTIPOMOV=2");
  book("20250115", "8", "CG42_INDDAAV=2");
  book("20250115", "16", "CG42_CODICE_CG33='150'");
  book("20250115", "32", "CG42_CODICE_CG33='151 '");
  book("20250115", "64", "CG42_CODICE_CG33='15'");
  book("20250115", "128", "CG41_INDPROVREG=1");
  book("20250115", "256", "CG41_ANNO_CG19=2024");
  book("20250115", "512", "CG41_PROGESER_CG19=2");
  book("20250115", "1024", "CG42_CONTOPAR_CG24='50010002'");
  book("20241231", "2048");
  EXPECT_EQ(total(), "1:63.00") << "1 + 2 + 4 - 8 + 64";
  bo.TipoMovimenti = "CG41_INDTIPOMOV = 2";
  EXPECT_EQ(total(), "1:4.00");
  bo.TipoMovimenti = "1 = 1";
  bo.IsSoloMovCliFor = true;
  EXPECT_EQ(total(), "1:1.00");
  db->Execute("UPDATE BU67_BDGCASHFLOW SET BU67_CLIFOR_CG44 = NULL");
  EXPECT_EQ(total(), "1:63.00") << "a card without a party takes all";
  bo.IsSoloMovCliFor = false;
  db->Execute("UPDATE BU65_TESBUDGET SET BU65_CONTO_CG24 = '50010000'");
  EXPECT_EQ(total(), "1:1087.00") << "a ledger account takes those below it";
}

TEST_F(ElaborazioneSchede, PlacesCompetenceByItsDates) {
  const auto a = cardWithTerms("A1");
  bo.TipoDataMovimenti = 1;
  const auto written = [&](const std::vector<std::pair<const char*, const char*>>& movements) {
    for (const char* table : {"BU66_DETBUDGET", "CG42_MOVCONT", "CG41_PRIMANOTA"})
      db->Execute("DELETE FROM " + std::string(table));
    for (const auto& [amount, columns] : movements) book("20250810", amount, columns);
    EXPECT_EQ(run(), "0 ");
    return amounts(a, 1);
  };
  const char* const kAlways = "CG42_INDRATRIS=0";
  EXPECT_EQ(written({{"1", kAlways}}), "1:0.00 2:0.00 3:1.00 4:0.00") << "the registration";
  EXPECT_EQ(written({{"1", "CG41_DATADOC='20250210'"}}), "1:1.00 2:0.00 3:0.00 4:0.00") << "the document";
  EXPECT_EQ(written({{"1", "CG42_DATAINICOMP='20250410'"}}), "1:0.00 2:1.00 3:0.00 4:0.00") << "a start alone";
  EXPECT_EQ(written({{"1", "CG42_DATAFINCOMP='20251010'"}}), "1:0.00 2:0.00 3:0.00 4:1.00") << "an end alone";
  EXPECT_EQ(written({{"0.04", "CG42_DATAINICOMP='20250330', CG42_DATAFINCOMP='20250402'"}}),
            "1:0.02 2:0.02 3:0.00 4:0.00");
  EXPECT_EQ(written({{"0.05", "CG42_DATAINICOMP='20250330', CG42_DATAFINCOMP='20250402'"}}),
            "1:0.03 2:0.02 3:0.00 4:0.00")
      << "halves up, the last month takes what is left";
  EXPECT_EQ(written({{"7", "CG42_INDRATRIS=4, CG42_DATAINICOMP='20250110', CG42_DATAFINCOMP='20250501'"}}),
            "1:0.00 2:0.00 3:7.00 4:0.00")
      << "an accrual has no interval";
  EXPECT_EQ(written({{"-90", "CG42_DATAINICOMP='20250101', CG42_DATAFINCOMP='20250331'"},
                     {"91", "CG42_INDDAAV=2, CG42_DATAINICOMP='20250401', CG42_DATAFINCOMP='20250630'"}}),
            "1:-90.00 2:-91.00 3:0.00 4:0.00");
  dates("20250401", "20250630");
  EXPECT_EQ(written({{"365", "CG42_DATAINICOMP='20250101', CG42_DATAFINCOMP='20251231'"}}), "1: 2:91.00 3: 4:")
      << "what lies outside the range is not written";
  EXPECT_EQ(written({{"5", "CG42_DATAINICOMP='20250101', CG42_DATAFINCOMP='20250331'"}}), "") << "outside, no movement";
}

TEST_F(ElaborazioneSchede, TotalsNothingByAnUnknownDate) {
  const auto a = cardWithTerms("A1");
  detail(a, "1 1 5");
  book("20250115", "10");
  bo.TipoDataMovimenti = 2;
  EXPECT_EQ(run(), "0 ");
  EXPECT_EQ(amounts(a, 1), "1:0.00 2:0.00 3:0.00 4:0.00");
}

TEST_F(ElaborazioneSchede, RefusesWithoutItsInputsAndFailsWithoutPeriods) {
  const auto a = cardWithTerms("A1");
  detail(a, "1 1 5");
  book("20250115", "10");
  const struct {
    std::function<void(CLSKORVAL&)> spoil;
    const char* outcome;
  } kRows[] = {
      {[](CLSKORVAL& o) { o.SottoTipoBudget = ""; }, "1 SottoTipoBudget  : Dato non definito nel BO "},
      {[](CLSKORVAL& o) { o.BdgTipoScheda = "   "; }, "1 BdgTipoScheda  : Dato non definito nel BO "},
      {[](CLSKORVAL& o) { o.DaData = Variant::Null(); }, "1 DaData  : Dato non definito nel BO "},
      {[](CLSKORVAL& o) { o.TipoMovimenti = ""; }, "1 Tipo movimento da elaborare  : Dato non definito nel BO "},
      {[](CLSKORVAL& o) { o.AnnoEsercizio = 2031; }, "99   in BdgElaSchede_Elaborazione"},
      {[](CLSKORVAL& o) { o.TipoMovimenti = "CG41_NIENTE = 1"; }, nullptr},
      {[](CLSKORVAL& o) { o.BdgTipoScheda = "zero"; }, nullptr}};
  for (const auto& row : kRows) {
    bo.SottoTipoBudget = "01";
    bo.BdgTipoScheda = 0;
    bo.AnnoEsercizio = 2025;
    bo.TipoMovimenti = "1 = 1";
    dates("20250101", "20251231");
    row.spoil(bo);
    const auto outcome = run();
    if (row.outcome) {
      EXPECT_EQ(outcome, row.outcome);
    }
    EXPECT_NE(bo.Stato(), bdgStatoOk);
    EXPECT_EQ(amounts(a, 1), "1:5.00") << outcome;
    EXPECT_NO_THROW(db->BeginTrans()) << "a transaction was left open by " << outcome;
    db->RollbackTrans();
  }
}

TEST_F(ElaborazioneSchede, KeepsNothingOfARunThatFailsAtItsEnd) {
  const auto a = cardWithTerms("A1"), b = cardWithTerms("B1", "BU65_CONTO_CG24='50010002'");
  book("20250115", "10");
  book("20250115", "9999999999999.99", "CG42_CONTOPAR_CG24='50010002'");
  book("20250116", "9999999999999.99", "CG42_CONTOPAR_CG24='50010002'");
  EXPECT_EQ(run().substr(0, 2), "99") << "the sum has a digit too many";
  EXPECT_EQ(amounts(a, 1) + amounts(b, 1), "");
  EXPECT_THAT(events, ElementsAre("Elaborazione schede spese generali 2", "1", "end")) << "the end is told";
}

}  // namespace
