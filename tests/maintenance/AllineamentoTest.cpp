#include "maintenance/Allineamento.h"
#include "maintenance/Stampless.h"
#include "support/FakeYears.h"
#include "support/TestContext.h"

namespace {

using bukorval::AllineaBU65_A_StrutturaBU60, testing_support::FakeYears, testing_support::TestContext;

/// A structure of two cards, of which the budget of type 3 has the first.
struct Structured : TestContext {
  Structured() : TestContext(3) {
    FakeYears::install();
    define({{"BU01_CODICE_BU60", "ST1"}, {"BU01_FLGSEDI", 0}});
    answer({"BU60_DESCR", "BU60_INDTIPOPDC", "BU60_CODICEPDC"}, {{"Struttura", 1, 5}});
    answer({"BU61_ELEMENTO", "BU61_CAMPO", "BU61_VALORE"},
           {{1, "BU65_CONTO_CG24", "100"}, {2, "BU65_AREA_MG08", "NE"}, {2, "BU65_CONTO_CG24", "200"}});
    answer({"BU65_ID", "BU65_AREA_MG08", "BU65_CONTO_CG24"}, {{1, Variant::Null(), "100  "}, {2, "SO", "200"}});
    answerNothing();
    answer({""}, {{31}});
    define({{"BU01_INDPERIODO", 5}, {"BU01_NUMFORECAST", 0}});
    keepEvents();
  }
};

TEST(Allineamento, AddsTheMissingCardsInOneTransaction) {
  Structured budget;
  AllineaBU65_A_StrutturaBU60(budget.ctx);
  EXPECT_EQ(budget.outcome(), "0 ");
  EXPECT_THAT(budget.events,
              testing::ElementsAre("Allineamento delle schede alla struttura del budget 2", "1", "2", "end"));
  const auto texts = maintenance_tests::stampless(*budget.db);
  ASSERT_EQ(texts.size(), 11u);
  EXPECT_EQ(texts[3], "BeginTrans");
  EXPECT_EQ(texts[5],
            " INSERT INTO BU65_TESBUDGET \r\n"
            " (BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_DITTA_CG18, BU65_ANNO, BU65_PROGESER, BU65_AREA_MG08, "
            "BU65_CONTO_CG24, BU65_GRUPPO_CG10, BU65_FLGBUDGET , BU65_FLGCFLOW , BU65_DATAULTAGG )\r\n"
            "VALUES\r\n (3, 'A1', 7, 2024, 1, N'NE', N'200', 5, 0 , 0 , NOW)\r\n");
  EXPECT_EQ(texts.back(), "CommitTrans");
}

TEST(Allineamento, UndoesEverythingWhenAStatementOrAHandlerFails) {
  for (const std::size_t k : {1u, 2u, 3u, 5u, 6u, 7u, 8u, 9u, 10u}) {  // the fourth begins the transaction
    Structured budget;
    budget.failAt(k);
    AllineaBU65_A_StrutturaBU60(budget.ctx);
    EXPECT_EQ(budget.ctx.stato(), 99) << k;
    EXPECT_THAT(budget.ctx.errore(), testing::StartsWith("boom in "));
    EXPECT_EQ(budget.db->texts.size(), k < 4 ? k : k + 1);
    EXPECT_EQ(budget.db->texts.back() == "RollbackTrans", k > 4);
    EXPECT_EQ(budget.ctx.errore() == "boom in AllineaBU65_A_StrutturaBU60", k == 3 || k == 5) << k;
  }
  Structured budget;
  budget.eventi.StepProcess = [](Variant&) { throw values::Errore("stop"); };
  AllineaBU65_A_StrutturaBU60(budget.ctx);
  EXPECT_EQ(budget.outcome(), "99 stop in AllineaBU65_A_StrutturaBU60");
  EXPECT_EQ(budget.db->texts.back(), "RollbackTrans");
}

TEST(Allineamento, RefusesAnIncompleteSelection) {
  const auto refused = [](const std::function<void(TestContext&)>& prepare) {
    TestContext budget(3);
    FakeYears::install();
    prepare(budget);
    AllineaBU65_A_StrutturaBU60(budget.ctx);
    return budget.outcome();
  };
  EXPECT_EQ(refused([](auto& budget) { budget.prop.AnnoEsercizio = Variant::Null(); }),
            "1 AnnoEsercizio  : Dato non definito nel BO ");
  EXPECT_EQ(refused([](auto& budget) { budget.answer({"BU01_CODICE_BU60"}, {}); }),
            "1 CodiceStrutturaBU60  : Dato non definito nel BO ");
  EXPECT_EQ(refused([](auto& budget) {
              budget.prop.CodiceStrutturaBU60 = "ZZ";
              budget.answer({"BU60_DESCR", "BU60_INDTIPOPDC", "BU60_CODICEPDC"}, {});
            }),
            "1 La struttura ZZ non esiste ");
  EXPECT_EQ(refused([](auto&) { FakeYears::exists = false; }), "1 L'esercizio 2024/1 non esiste ");
}

}  // namespace
