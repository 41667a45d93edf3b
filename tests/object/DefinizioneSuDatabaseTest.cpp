// The questions about a budget, asked of a real database.

#include "object/Budgets.h"
#include "object/CLSKORVAL.h"
#include "suite/Suite.h"

namespace {

using namespace bukorval;

struct DefinizioneSuDatabase : testing::Test {
  ado::ConnectionPtr db = object_tests::companyWithBudgets();
  CLSKORVAL bo;
  DefinizioneSuDatabase() {
    suite::registraServiziSuite();
    bo.Connessione(db);
    bo.ActiveInterface = std::make_shared<suite::Sessione>(db);
  }
  ~DefinizioneSuDatabase() override { EXPECT_EQ(bo.errore(), ""); }
};

TEST_F(DefinizioneSuDatabase, ReadsTheSettings) {
  for (const auto* subtype : {"A", "A ", "a"}) {
    SCOPED_TRACE(subtype);
    EXPECT_EQ(bo.GetPeriodicitaBudget(0, subtype), 2);
    EXPECT_EQ(bo.GetNumeroForecast(0, subtype), 2);
    EXPECT_EQ(bo.GetAnnoBudgetFiscaleSolare(0, subtype), 0);
    EXPECT_TRUE(bo.GetIsGestioneMastri(0, subtype));
    EXPECT_EQ(bo.GetTipoPdC(5, subtype), 3);
    EXPECT_EQ(values::toInt32(bo.GetCodicePdC(5, subtype)), 77);
    EXPECT_TRUE(bo.GetIsStrutturaConVariante(0, subtype));
    EXPECT_FALSE(bo.GetIsElementoInStruttura(0, subtype, "SED"));
    bool site = true, quantity1 = true, quantity2 = true;
    bo.GetGestioneSede(0, subtype, site);
    bo.GetGestioneQta(0, subtype, quantity1, quantity2);
    EXPECT_FALSE(site || quantity1 || quantity2);
  }
  EXPECT_EQ(bo.GetPeriodicitaBudget(0, "Z"), 99);
  EXPECT_EQ(bo.GetProgressivoEsercizio(1, 2024), 1);
  EXPECT_EQ(bo.GetDescrizionePeriodo(1, 0, 0, 1, 2024, 1), "Luglio");
}

TEST_F(DefinizioneSuDatabase, FindsTheDataOfABudget) {
  EXPECT_TRUE(bo.GetIsBudgetConTestata(1, 0, "A"));
  EXPECT_FALSE(bo.GetIsBudgetConSolaTestata(1, 0, "A"));
  db->Execute("DELETE FROM BU66_DETBUDGET");
  EXPECT_TRUE(bo.GetIsBudgetConSolaTestata(1, 0, "A"));
  EXPECT_FALSE(bo.GetIsBudgetConTestata(2, 0, "A"));
  bo.TipoBudget = 4;
  EXPECT_TRUE(bo.GetIsBudgetValorizzatoDitta(1, 4, "A"));
  EXPECT_FALSE(bo.GetIsBudgetValorizzato(4, "A")) << "no general-cost header";
  bo.TipoBudget = 2;
  EXPECT_TRUE(bo.GetIsBudgetValorizzatoDitta(1, 2, "A"));
  EXPECT_TRUE(bo.GetIsBudgetValorizzato(2, "A"));
}

TEST_F(DefinizioneSuDatabase, ShowsTheGrid) {
  bo.CodiceDitta = 1;
  bo.SottoTipoBudget = "A";
  bo.AnnoEsercizio = 2024;
  bo.ProgressivoEsercizio = 1;
  const auto grid = bo.RecordSetBudget();
  ASSERT_TRUE(grid);
  ASSERT_EQ(grid->RecordCount(), 2);
  EXPECT_EQ(values::toPlainText((*grid)["IMP_BUDGET"].Value()), "100.25");
  const auto periods = bo.RecSetPeriodiBudget((*grid)["BU65_ID"].Value());
  ASSERT_EQ(periods->RecordCount(), 4);
  EXPECT_EQ(values::toPlainText((*periods)["IMP_BUDGET"].Value()), "100.25");
}

}  // namespace
