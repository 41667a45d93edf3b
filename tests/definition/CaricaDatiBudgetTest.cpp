#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "definition/Banco.h"
#include "definition/CaricaDatiBudget.h"
#include "definition/EserciziFinti.h"

namespace bukorval {
namespace {

using definition_tests::Banco;
using definition_tests::EserciziFinti;
using values::Date;
using values::Variant;

/// A budget definition that answers each question by the column it asks for.
struct CaricaDatiTest : testing::Test {
  Banco banco;
  std::vector<std::string> lette;
  std::map<std::string, Variant> colonne = {
      {"BU01_INDPERIODO", 2},       {"BU01_INDTIPOPDC", 3},  {"CODICEPDC", 12},     {"BU01_FLGSEDI", 1},
      {"BU01_INDMULTIATTIVITA", 2}, {"BU01_NUMFORECAST", 3}, {"BU01_INDPERFISO", 0}};
  CaricaDatiTest() {
    EserciziFinti::registra();
    EserciziFinti::anno("20230701", "20241231");
    banco.prop.TipoBudget = 5;
    banco.db->onExecute = [this](std::string_view testo) {
      for (const auto& [colonna, valore] : colonne) {
        if (testo.find(colonna == "CODICEPDC" ? "CODICEPDC" : "SELECT " + colonna) == testo.npos) continue;
        lette.push_back(colonna);
        if (valore == Variant("guasto")) throw values::Errore("boom");
        banco.rispondi({colonna}, {{valore}});
      }
    };
  }
};

TEST_F(CaricaDatiTest, LoadsTheDefinitionInOrder) {
  ASSERT_TRUE(GetDatiBudget(banco.ctx));
  const auto& dati = banco.ctx.dati;
  EXPECT_THAT(lette, testing::ElementsAre("BU01_INDPERIODO", "BU01_INDTIPOPDC", "CODICEPDC", "BU01_FLGSEDI",
                                          "BU01_INDMULTIATTIVITA", "BU01_NUMFORECAST", "BU01_INDPERFISO"));
  EXPECT_EQ(dati.natura, 0);
  EXPECT_EQ(dati.periodicita, 2);
  EXPECT_EQ(values::toInt32(dati.numeroPeriodi), 4);
  EXPECT_EQ(dati.tipoPdc, 3);
  EXPECT_EQ(dati.codicePdc, Variant(12));
  EXPECT_TRUE(dati.gestioneSede);
  EXPECT_EQ(dati.tipoMultiAttivita, 2);
  EXPECT_EQ(dati.numeroForecast, 3);
  EXPECT_EQ(dati.fiscaleSolare, 0);
  EXPECT_EQ(dati.dataInizio, Variant(Date::FromYmd(2023, 7, 1)));
  EXPECT_EQ(dati.dataFine, Variant(Date::FromYmd(2024, 6, 30)));
  EXPECT_EQ(values::toInt32(dati.periodoIniziale), 1);
  EXPECT_EQ(values::toInt32(dati.periodoFinale), 4);
  EXPECT_EQ(EserciziFinti::ultimaDomanda, "DateInizioFine 1 2024 1");
}

TEST_F(CaricaDatiTest, CountsPeriodsFromJanuaryForACalendarYearBudget) {
  colonne["BU01_INDPERFISO"] = 1;
  ASSERT_TRUE(GetDatiBudget(banco.ctx));
  EXPECT_EQ(values::toInt32(banco.ctx.dati.periodoIniziale), 3);
  EXPECT_EQ(values::toInt32(banco.ctx.dati.periodoFinale), 2);
}

TEST_F(CaricaDatiTest, TakesTheSessionsChartForALedgerBudget) {
  banco.prop.TipoBudget = 0;
  ASSERT_TRUE(GetDatiBudget(banco.ctx));
  EXPECT_EQ(banco.ctx.dati.tipoPdc, bdgPdcCoGe);
  EXPECT_EQ(banco.ctx.dati.codicePdc, Variant("PDCSESS"));
  EXPECT_EQ(banco.prop.CodicePdcCoGeDitta, Variant("PDCSESS"));
}

TEST_F(CaricaDatiTest, LeavesThePeriodsOpenWithoutDatesOrPeriodicity) {
  ASSERT_TRUE(GetDatiBudget(banco.ctx));
  EserciziFinti::inizio = Variant();
  ASSERT_TRUE(GetDatiBudget(banco.ctx));
  EXPECT_TRUE(banco.ctx.dati.dataInizio.isEmpty());
  EXPECT_TRUE(banco.ctx.dati.periodoIniziale.isEmpty());

  EserciziFinti::anno("20240101", "20241231");
  colonne["BU01_INDPERIODO"] = 99;
  ASSERT_TRUE(GetDatiBudget(banco.ctx));
  EXPECT_TRUE(banco.ctx.dati.periodoFinale.isEmpty());
}

TEST_F(CaricaDatiTest, LoadsNothingWithoutASubtype) {
  banco.prop.SottoTipoBudget = "  ";
  EXPECT_FALSE(GetDatiBudget(banco.ctx));
  EXPECT_TRUE(lette.empty());
}

TEST_F(CaricaDatiTest, StopsAtTheFirstFailureAndKeepsItsName) {
  const std::pair<const char*, const char*> guasti[] = {{"BU01_INDPERIODO", "GetPeriodicitaBudget"},
                                                        {"BU01_INDTIPOPDC", "GetTipoPdC"},
                                                        {"CODICEPDC", "GetCodicePdC"},
                                                        {"BU01_FLGSEDI", "GetGestioneSede"},
                                                        {"BU01_INDMULTIATTIVITA", "GetTipoGestioneMultiAttivita"},
                                                        {"BU01_NUMFORECAST", "GetNumeroForecast"},
                                                        {"BU01_INDPERFISO", "GetAnnoBudgetFiscaleSolare"}};
  const auto buone = colonne;
  for (const auto& [colonna, procedura] : guasti) {
    colonne = buone;
    colonne[colonna] = "guasto";
    lette.clear();
    EXPECT_FALSE(GetDatiBudget(banco.ctx));
    EXPECT_EQ(banco.esito(), std::string("99 boom in ") + procedura);
    EXPECT_EQ(lette.back(), colonna);
    banco.db->answers.clear();
  }
  colonne = buone;
  EserciziFinti::guasto = true;
  EXPECT_FALSE(GetDatiBudget(banco.ctx));
  EXPECT_EQ(banco.esito(), "99 boom in DeterminaDateInizioFineEsercizio");
}

TEST_F(CaricaDatiTest, IsRefusedWithoutAConnection) {
  banco.ctx.connessione(nullptr);
  EXPECT_FALSE(GetDatiBudget(banco.ctx));
  EXPECT_EQ(banco.esito(), "1 Non è stata definita la stringa di connessione");
}

}  // namespace
}  // namespace bukorval
