// What the accounting situation component is given, month by month, and what its failures become.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

#include "elaeco/Azienda.h"

namespace elaeco_tests {
namespace {

using testing::ElementsAre;
using values::Date;
using Proprieta = std::vector<std::pair<std::string, std::string>>;

/// The month's first and last day as the calls were given them.
std::vector<std::string> intervalli(const SituazioneFinta& situazione) {
  std::vector<std::string> testi;
  for (const auto& chiamata : situazione.chiamate) testi.push_back(chiamata.da + "-" + chiamata.a);
  return testi;
}

std::string proprieta(const SituazioneFinta& situazione, const std::string& nome) {
  for (const auto& [chiave, valore] : situazione.chiamate.front().proprieta)
    if (chiave == nome) return valore;
  return "?";
}

TEST(SituazioneMese, EveryPropertyReachesTheComponent) {
  Azienda azienda;
  auto& prop = azienda.prop;
  prop.AData = Date::FromYmd(2025, 1, 31);
  azienda.ctx.stringaConnessione = "Provider=Prova";
  ASSERT_TRUE(azienda.popola()) << azienda.esito();
  const Proprieta spente = {{"Connection", "given"},
                            {"ConnectionString", "Provider=Prova"},
                            {"Ditta", "1"},
                            {"SedeDaElaborare", "not set"},
                            {"GruppoPdC", "1"},
                            {"AnnoEsercizio", "2025"},
                            {"ProgrEsercizio", "1"},
                            {"TipoData", "0"},
                            {"TipiMov_WhereCondition", "1 = 1"},
                            {"SaldoDiversoDaZero", "0"},
                            {"SimulaSaldoApertura", "0"},
                            {"SimulaAmmortamenti", "0"},
                            {"SimulaAmmCivilistico", "0"},
                            {"TipoAmmortamento", "0"},
                            {"SimulaRisconti", "0"},
                            {"SimulaRimanenzeFinali", "0"},
                            {"TipoConti", "0"},
                            {"NumLivelli", "0"},
                            {"Intermedi", "0"},
                            {"PiuAttivita", "0"},
                            {"MastroClienti", "10010000"},
                            {"MastroFornitori", "20010000"},
                            {"PercDiRicarica", "0"},
                            {"Situazione", "2"},
                            {"ProvenienzaRichiestaElaborazione", "1"},
                            {"FiltroConto", "not set"}};
  EXPECT_EQ(azienda.situazione.chiamate.at(0).proprieta, spente);

  azienda.db->Execute("UPDATE BU01_ANABUDGET SET BU01_INDMULTIATTIVITA = 2");
  azienda.situazione.chiamate.clear();
  prop.CodiceSede = 4;
  prop.CodicePdcCoGeDitta = 6;
  prop.AnnoEsercizioMovimenti = 2024;
  prop.ProgressivoEsercizioMovimenti = 3;
  prop.TipoDataMovimenti = 1;
  prop.TipoMovimenti = " CG41_INDTIPOMOV IN (0, 2) ";
  prop.GestioneAmmortamenti = prop.GestioneRateiRisconti = true;
  azienda.sessione->clienti = "11";
  azienda.sessione->fornitori = "22";
  ASSERT_TRUE(azienda.popola()) << azienda.esito();
  Proprieta accese = spente;
  for (const auto& [nome, valore] : Proprieta{{"SedeDaElaborare", "4"},
                                              {"GruppoPdC", "6"},
                                              {"AnnoEsercizio", "2024"},
                                              {"ProgrEsercizio", "3"},
                                              {"TipoData", "2"},
                                              {"TipiMov_WhereCondition", " CG41_INDTIPOMOV IN (0, 2) "},
                                              {"SimulaAmmCivilistico", "1"},
                                              {"TipoAmmortamento", "3"},
                                              {"SimulaRisconti", "1"},
                                              {"PiuAttivita", "1"},
                                              {"MastroClienti", "11"},
                                              {"MastroFornitori", "22"}})
    for (auto& coppia : accese)
      if (coppia.first == nome) coppia.second = valore;
  EXPECT_EQ(azienda.situazione.chiamate.at(0).proprieta, accese);
}

TEST(SituazioneMese, MonthsRunFromTheFirstDateToTheLast) {
  struct Caso {
    const char* nome;
    Date da, a;
    bool rettifiche;
    std::vector<std::string> attesi;
  };
  const Caso casi[] = {
      {"one month", Date::FromYmd(2024, 2, 10), Date::FromYmd(2024, 2, 29), false, {"20240201-20240229"}},
      {"cut at the last date",
       Date::FromYmd(2025, 2, 1),
       Date::FromYmd(2025, 3, 15),
       false,
       {"20250201-20250228", "20250301-20250315"}},
      {"over the turn of the year",
       Date::FromYmd(2024, 11, 30),
       Date::FromYmd(2025, 2, 28),
       false,
       {"20241101-20241130", "20241201-20241231", "20250101-20250131", "20250201-20250228"}},
      {"adjustments follow the movements' last month",
       Date::FromYmd(2025, 11, 1),
       Date::FromYmd(2025, 12, 31),
       true,
       {"20251101-20251130", "20251201-20260131"}},
      {"and no other month", Date::FromYmd(2025, 6, 1), Date::FromYmd(2025, 6, 30), true, {"20250601-20250630"}},
      {"reversed", Date::FromYmd(2025, 6, 1), Date::FromYmd(2025, 5, 31), false, {}},
  };
  Azienda azienda;
  for (const auto& caso : casi) {
    azienda.situazione.chiamate.clear();
    azienda.prop.DaData = caso.da;
    azienda.prop.AData = caso.a;
    azienda.prop.GestioneRettifiche = caso.rettifiche;
    ASSERT_TRUE(azienda.popola()) << caso.nome << ": " << azienda.esito();
    EXPECT_EQ(intervalli(azienda.situazione), caso.attesi) << caso.nome;
  }
  // The adjustments are those of the movements' year, whatever the budget's.
  azienda.situazione.chiamate.clear();
  azienda.prop.AnnoEsercizioMovimenti = 2024;
  azienda.prop.DaData = Date::FromYmd(2025, 6, 1);
  azienda.prop.AData = Date::FromYmd(2025, 6, 30);
  azienda.prop.GestioneRettifiche = true;
  ASSERT_TRUE(azienda.popola()) << azienda.esito();
  EXPECT_THAT(intervalli(azienda.situazione), ElementsAre("20250601-20250731"));
}

TEST(SituazioneMese, TheAccountRangeIsAConditionOnGeneralLedgerBudgetsOnly) {
  const std::string colonna = " AND (CG42_MOVCONT.CG42_CONTOPAR_CG24 ";
  const std::vector<std::vector<std::string>> casi = {
      {"01", "50010001", "50019999", colonna + "BETWEEN '50010001' AND '50019999') "},
      {"01", "50010001", "", colonna + ">= '50010001') "},
      {"01", "", "50019999", colonna + "<= '50019999') "},
      {"01", "", "", "not set"},
      {"02", "A", "B", "not set"},
      {"03", "A", "", "not set"},
  };
  Azienda azienda;
  azienda.prop.AData = Date::FromYmd(2025, 1, 31);
  for (const auto& caso : casi) {
    azienda.situazione.chiamate.clear();
    azienda.prop.SottoTipoBudget = caso[0];
    azienda.prop.DaConto = caso[1];
    azienda.prop.AConto = caso[2];
    ASSERT_TRUE(azienda.popola()) << azienda.esito();
    EXPECT_EQ(proprieta(azienda.situazione, "FiltroConto"), caso[3]);
  }
}

TEST(SituazioneMese, AFailureOfTheComponentIsToldInItsWordsAndLeavesNoRows) {
  Azienda azienda;
  azienda.situazione.saldi = [](const std::string&) { return std::vector{dare("50010001", "10")}; };
  azienda.situazione.guastaDa = 3;
  EXPECT_FALSE(azienda.popola());
  EXPECT_EQ(
      azienda.esito(),
      "99 Errore in CreaRecordsetSaldiDaSituazioneEP\r\n(chiamata metodo CreaRecordsetSituazioneEconomicaPatrimoniale)"
      "\r\nStato = 7 - Errore = anno chiuso");
  EXPECT_EQ(azienda.situazione.chiamate.size(), 3u);
  EXPECT_EQ(azienda.prop.RstSaldiElaEco->RecordCount(), 0);

  azienda.situazione.guastaDa.reset();
  azienda.situazione.senzaInsieme = true;
  EXPECT_FALSE(azienda.popola());
  EXPECT_EQ(azienda.esito(),
            "99 The accounting situation returned no record set in BdgElaEco_PopolaRstSaldiDaSituazioneEP");

  suite::registraServizio(suite::kSituazioneContabile, [] { return std::make_shared<values::Object>(); });
  EXPECT_FALSE(azienda.popola());
  EXPECT_THAT(azienda.esito(), testing::EndsWith(" in BdgElaEco_PopolaRstSaldiDaSituazioneEP"));
}

}  // namespace
}  // namespace elaeco_tests
