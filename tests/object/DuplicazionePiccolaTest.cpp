// The duplication on a small company: which cards are copied, what a copy has, what is left alone.

#include "object/SmallBudgets.h"

namespace {

using namespace bukorval;
using namespace object_tests;
using testing::ElementsAre;

/// Cards of 4/01 in 2025, copied into 4/02 of the same year.
struct DuplicazionePiccola : SmallBudgets {
  DuplicazionePiccola() { copyInto("02"); }
  std::string run() {
    bo.BdgDupSchede_Duplicazione();
    return std::to_string(bo.Stato()) + " " + bo.errore();
  }
  /// The cards of 4/02, "code columns; …".
  std::string copies(const std::string& columns = "BU65_CONTO_CG24") const {
    std::string text;
    for (const auto& row : list("SELECT BU65_SCHEDA_BU07, " + columns +
                                " FROM BU65_TESBUDGET WHERE BU65_SOTTOTIPO_BU01 = '02' ORDER BY BU65_SCHEDA_BU07,"
                                " BU65_ID"))
      text += (text.empty() ? "" : "; ") + row;
    return text;
  }
  std::int64_t copyOf(const char* code) const {
    return std::stoll(
        one("SELECT MAX(BU65_ID) FROM BU65_TESBUDGET WHERE BU65_SOTTOTIPO_BU01 = '02' AND"
            " BU65_SCHEDA_BU07 = '" +
            std::string(code) + "'"));
  }
};

TEST_F(DuplicazionePiccola, TakesTheCardsOfTheRange) {
  for (const char* code : {"A1", "B1", "B2", "C1"}) card(code);
  card("N1", "BU65_ANNO=2024");
  card("N2", "BU65_INDCOSRIC_BU07=1");
  card("N3", "BU65_DITTA_CG18=2");
  card("", "BU65_SCHEDA_BU07=NULL");
  card(" ");
  bo.DaScheda = "B";
  bo.AScheda = "B1";
  EXPECT_EQ(run(), "0 ");
  EXPECT_EQ(copies("BU65_ANNO"), "B1 2025");
  bo.DaScheda = bo.AScheda = {};
  EXPECT_EQ(run(), "0 ");
  EXPECT_EQ(copies("BU65_ANNO"), "A1 2025; B1 2025; B2 2025; C1 2025") << "B1 is not made again";
  EXPECT_EQ(shown(std::vector<Variant>{bo.DaScheda, bo.AScheda, bo.TipoElaborazioneBO}), " ,Z,42");
  EXPECT_EQ(bo.SottoTipoBudget, Variant("01"));
  bo.DaScheda = "X";
  EXPECT_EQ(run(), "0 ") << "no card is no failure";
  EXPECT_EQ(copies().size(), 4 * 11 + 3 * 2U);
}

TEST_F(DuplicazionePiccola, MakesACardLikeItsSourceInAnotherBudget) {
  const auto a = card("A1", "BU65_FLGCFLOW=1, BU65_FLGBUDGET=1, BU65_AREA_MG08='NO', BU65_CODICE_CG31=2");
  for (const char* text : {"0 1 100.25 1.5 2.5", "0 3 NULL", "1 1 7"}) detail(a, text);
  bo.BdgDestinazioneCodiceSede = 1;
  EXPECT_EQ(run(), "0 ");
  EXPECT_EQ(
      copies("BU65_CONTO_CG24, BU65_GRUPPO_CG10, BU65_AREA_MG08, BU65_FLGCFLOW, BU65_FLGBUDGET, BU65_CODICE_CG31"),
      "A1 50010001 1 NO 1 1 1");
  const auto copy = copyOf("A1");
  EXPECT_EQ(amounts(copy, 0), "1:100.25 2: 3: 4:");
  EXPECT_EQ(amounts(copy, 0, "BU66_QTA1") + " " + amounts(copy, 0, "BU66_QTA2"), "1:1.500 2: 3: 4: 1:2.500 2: 3: 4:");
  EXPECT_EQ(amounts(copy, 1), "1: 2: 3: 4:") << "another kind is not copied, but made";
  EXPECT_EQ(amounts(copy, 4), "1: 2: 3: 4:");
  EXPECT_EQ(amounts(a, 0), "1:100.25 3:");
}

TEST_F(DuplicazionePiccola, CopiesOneKindIntoAnother) {
  const auto a = card("A1");
  for (const char* text : {"0 1 1", "1 1 2", "1 4 3"}) detail(a, text);
  bo.TipoDettaglioOrigine = 1;
  bo.TipoDettaglioDestinazione = 3;
  EXPECT_EQ(run(), "0 ");
  EXPECT_EQ(amounts(copyOf("A1"), 3), "1:2.00 2: 3: 4:3.00");
  EXPECT_EQ(amounts(copyOf("A1"), 0), "1: 2: 3: 4:");
  bo.BdgDestinazioneSottoTipo = "01";
  bo.TipoDettaglioOrigine = 0;
  EXPECT_EQ(run(), "0 ");
  EXPECT_EQ(amounts(a, 3), "1:1.00") << "within one card";
}

TEST_F(DuplicazionePiccola, FillsWhatIsEmptyAndOverwritesOnRequest) {
  const auto a = card("A1"), there = card("A1", "BU65_SOTTOTIPO_BU01='02', BU65_CONTO_CG24='50010002'");
  for (const char* text : {"0 1 1 10", "0 2 2", "0 3 NULL 30"}) detail(a, text);
  for (const char* text : {"0 1 9 NULL", "0 3 8 NULL", "0 4 7"}) detail(there, text);
  bo.IsForzoDuplicazioneContoCliFor = true;
  EXPECT_EQ(run(), "0 ");
  EXPECT_EQ(amounts(there, 0), "1:9.00 2:2.00 3:8.00 4:7.00");
  EXPECT_EQ(amounts(there, 0, "BU66_QTA1"), "1:10.000 2: 3:30.000 4:") << "column by column";
  EXPECT_EQ(copies(), "A1 50010002") << "the account of a card that was there stays";
  bo.IsSovrascriviEsistenti = true;
  EXPECT_EQ(run(), "0 ");
  EXPECT_EQ(amounts(there, 0), "1:1.00 2:2.00 3: 4:7.00") << "an empty value of the source, too";
}

TEST_F(DuplicazionePiccola, MovesTheTermsIntoTheOtherYear) {
  const auto a = card("A1", "BU65_ANNO=2024");
  bo.AnnoEsercizio = 2024;  // from July
  insert(*db, "BU67_BDGCASHFLOW",
         "BU67_ID_BU65=" + std::to_string(a) +
             ", BU67_FLGSCADMAN=1, BU67_CLIFOR_CG44=77, BU67_NUMRATE=3, BU67_DATAINIVAL='20240831'");
  // Both count from the first month of their year only where that is the same one.
  EXPECT_THAT(run(), testing::StartsWith("1 I budget di origine e di destinazione contano i mesi da mesi diversi "));
  EXPECT_EQ(copies(), "");
  db->Execute("UPDATE BU01_ANABUDGET SET BU01_INDPERFISO = 1");
  EXPECT_EQ(run(), "0 ");
  EXPECT_EQ(one("SELECT BU67_FLGSCADMAN, BU67_CLIFOR_CG44, BU67_NUMRATE, BU67_DATAINIVAL FROM BU67_BDGCASHFLOW WHERE"
                " BU67_ID_BU65 = " +
                std::to_string(copyOf("A1"))),
            "1 77 3 28/02/2025")
      << "two months into the year, at a month's end";
}

TEST_F(DuplicazionePiccola, CopiesDueDatesOfBudgetsOnly) {
  const auto a = card("A1");
  detail(a, "0 1 100");
  insert(*db, "BU14_SCADCFLOW",
         "BU14_IDBUDGET=" + std::to_string(a) + ", BU14_PERIODO=1, BU14_DATASCAD='20250430', BU14_IMPORTO=100");
  const auto dates = [&] {
    return shown(
        list("SELECT BU14_DATASCAD, BU14_IMPORTO FROM BU14_SCADCFLOW WHERE BU14_IDBUDGET <> " + std::to_string(a)));
  };
  EXPECT_EQ(run(), "0 ");
  EXPECT_EQ(dates(), "") << "not asked for";
  bo.IsDuplicaScadenzeCashFlow = true;
  for (const auto& [from, to] : {std::pair(0, 3), {3, 0}, {1, 1}}) {
    bo.TipoDettaglioOrigine = from;
    bo.TipoDettaglioDestinazione = to;
    EXPECT_EQ(run(), "0 ");
    EXPECT_EQ(dates(), "") << from << " into " << to;
  }
  bo.TipoDettaglioOrigine = bo.TipoDettaglioDestinazione = 0;
  EXPECT_EQ(run(), "0 ");
  EXPECT_EQ(dates(), "30/04/2025 100.00");
}

TEST_F(DuplicazionePiccola, KeepsToTheSitesOfBothBudgets) {
  bo.SottoTipoBudget = "04";
  bo.BdgDestinazioneSottoTipo = "04";
  const auto one1 = card("A1", "BU65_SOTTOTIPO_BU01='04', BU65_CODICE_CG31=1"),
             other = card("A1", "BU65_SOTTOTIPO_BU01='04', BU65_CODICE_CG31=2");
  detail(one1, "0 1 1");
  detail(other, "0 1 2");
  bo.CodiceSede = 1;
  EXPECT_EQ(run(), "1  BdgDestinazioneCodiceSede : Dato non definito nel BO  in BdgDupSchede_Duplicazione");
  bo.BdgDestinazioneCodiceSede = 2;
  EXPECT_EQ(run(), "0 ");
  EXPECT_EQ(amounts(other, 0), "1:2.00") << "which had a value";
  bo.BdgDestinazioneCodiceSede = 3;
  EXPECT_EQ(run(), "0 ");
  EXPECT_EQ(shown(list("SELECT BU65_CODICE_CG31, BU66_IMPORTO FROM BU65_TESBUDGET INNER JOIN BU66_DETBUDGET ON"
                       " BU66_ID_BU65 = BU65_ID WHERE BU66_TIPO = 0 AND BU66_PERIODO = 1 ORDER BY BU65_CODICE_CG31")),
            "1 1.00,2 2.00,3 1.00");
  bo.CodiceSede = " ";
  EXPECT_EQ(run(), "1  CodiceSede : Dato non definito nel BO  in BdgDupSchede_Duplicazione");
}

TEST_F(DuplicazionePiccola, TellsItsStepsAndKeepsNothingOfARunThatFails) {
  std::vector<std::string> events;
  bo.eventi.BeginProcess = [&](Variant& text, Variant& steps) {
    events.push_back(values::toPlainText(text) + " " + values::toPlainText(steps));
  };
  bo.eventi.StepProcess = [&](Variant& step) { events.push_back(values::toPlainText(step)); };
  bo.eventi.EndProcess = [&] { events.push_back("end"); };
  card("A1");
  card("B1");
  EXPECT_EQ(run(), "0 ");
  EXPECT_THAT(events, ElementsAre("Duplicazione schede budget 2", "1", "2", "end"));
  db->Execute("DELETE FROM BU65_TESBUDGET WHERE BU65_SOTTOTIPO_BU01 = '02'");
  events.clear();
  bo.eventi.StepProcess = [&](Variant& step) {
    if (values::toInt32(step) == 2) throw values::Errore("stop");
  };
  EXPECT_EQ(run(), "99 stop in BdgDupSchede_Duplicazione");
  EXPECT_EQ(copies(), "");
  EXPECT_THAT(events, ElementsAre("Duplicazione schede budget 2", "end"));
  EXPECT_EQ(bo.SottoTipoBudget, Variant("01"));
}

TEST_F(DuplicazionePiccola, WritesNothingAfterAHandlerHasEndedItsTransaction) {
  card("A1");
  card("B1");
  card("C1");
  const auto endedBy = [&](auto handler) {
    bo.eventi.StepProcess = [&, handler](Variant& step) {
      if (values::toInt32(step) == 2) handler(*db);
    };
    const auto told = run();
    if (db->transaction() != 0) db->RollbackTrans();
    return told;
  };
  const std::string refused =
      "99 An event handler has ended the transaction of the operation in BdgDupSchede_Duplicazione";
  EXPECT_EQ(endedBy([](ado::Connection& own) { own.RollbackTrans(); }), refused);
  EXPECT_EQ(copies(), "");
  EXPECT_EQ(endedBy([](ado::Connection& own) { own.RollbackTrans(), own.BeginTrans(); }), refused);
  EXPECT_EQ(copies(), "");
  EXPECT_EQ(endedBy([](ado::Connection& own) { own.CommitTrans(); }), refused);
  const auto committed = copies();
  EXPECT_THAT(committed, Not(testing::HasSubstr("C1")));
  EXPECT_THAT(committed, testing::HasSubstr("A1"));
}

}  // namespace
