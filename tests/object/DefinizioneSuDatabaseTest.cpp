#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "object/CLSKORVAL.h"
#include "object/DatabasePiccolo.h"

/// The questions about a budget, asked of a real database.
namespace bukorval {
namespace {

using values::Date;
using values::Variant;

struct DefinizioneSuDatabase : testing::Test {
  ado::ConnectionPtr db = object_tests::databasePiccolo();
  CLSKORVAL bo;
  DefinizioneSuDatabase() {
    bo.Connessione(db);
    bo.ActiveInterface = std::make_shared<suite::Sessione>(db);
  }
  ~DefinizioneSuDatabase() override { EXPECT_EQ(bo.errore(), ""); }
};

TEST_F(DefinizioneSuDatabase, ReadsTheSettings) {
  for (const auto* sottoTipo : {"A", "A ", "a"}) {
    SCOPED_TRACE(sottoTipo);
    EXPECT_EQ(bo.GetPeriodicitaBudget(0, sottoTipo), 2);
    EXPECT_EQ(bo.GetNumeroForecast(0, sottoTipo), 2);
    EXPECT_EQ(bo.GetAnnoBudgetFiscaleSolare(0, sottoTipo), 0);
    EXPECT_TRUE(bo.GetIsGestioneMastri(0, sottoTipo));
    EXPECT_EQ(bo.GetTipoPdC(5, sottoTipo), 3);
    EXPECT_EQ(values::toInt32(bo.GetCodicePdC(5, sottoTipo)), 77);
    EXPECT_TRUE(bo.GetIsStrutturaConVariante(0, sottoTipo));
    EXPECT_FALSE(bo.GetIsElementoInStruttura(0, sottoTipo, "SED"));
    bool sede = true, qta1 = true, qta2 = true;
    bo.GetGestioneSede(0, sottoTipo, sede);
    bo.GetGestioneQta(0, sottoTipo, qta1, qta2);
    EXPECT_FALSE(sede || qta1 || qta2);
  }
  EXPECT_EQ(bo.GetPeriodicitaBudget(0, "Z"), 99);
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

TEST_F(DefinizioneSuDatabase, KnowsTheAccountingYears) {
  EXPECT_EQ(bo.GetProgressivoEsercizio(1, 2024), 1);
  EXPECT_TRUE(bo.EsisteEsercizio(1, 2024, 1));
  EXPECT_FALSE(bo.EsisteEsercizio(1, 2024, 2));
  EXPECT_FALSE(bo.EsistonoEsercizi(1, 2023));
  EXPECT_FALSE(bo.GetIsEsercizioChiuso(1, 2024, 1));
  Variant inizio, fine;
  bo.GetBdgDataInizioBdgDataFine(0, "A", 1, 2024, 1, inizio, fine);
  EXPECT_EQ(inizio, Variant(Date::FromYmd(2024, 7, 1)));
  EXPECT_EQ(fine, Variant(Date::FromYmd(2025, 6, 30)));
  EXPECT_EQ(bo.GetDescrizionePeriodo(1, 0, 0, 1, 2024, 1), "Luglio");
  EXPECT_EQ(bo.GetDescrizionePeriodo(1, 0, 0, 12, 2024, 1), "Giugno");
  EXPECT_EQ(bo.GetDescrizionePeriodo(1, 2, 0, 3, 2024, 1), "3° Trimestre");
}

TEST_F(DefinizioneSuDatabase, ShowsTheGrid) {
  bo.CodiceDitta = 1;
  bo.SottoTipoBudget = "A";
  bo.AnnoEsercizio = 2024;
  bo.ProgressivoEsercizio = 1;
  const auto griglia = bo.RecordSetBudget();
  ASSERT_TRUE(griglia);
  ASSERT_EQ(griglia->RecordCount(), 2);
  EXPECT_EQ(values::toPlainText((*griglia)["IMP_BUDGET"].Value()), "100.25");
  const auto periodi = bo.RecSetPeriodiBudget((*griglia)["BU65_ID"].Value());
  ASSERT_EQ(periodi->RecordCount(), 4);
  EXPECT_EQ(values::toPlainText((*periodi)["IMP_BUDGET"].Value()), "100.25");
}

}  // namespace
}  // namespace bukorval
