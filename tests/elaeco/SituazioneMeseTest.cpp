// What the accounting situation component is given, month by month, and what its failures become.

#include "elaeco/Company.h"

namespace {

using namespace elaeco_tests;

TEST(SituazioneMese, EveryPropertyReachesTheComponent) {
  Company company;
  auto& prop = company.prop;
  prop.AData = Date::FromYmd(2025, 1, 31);
  company.ctx.stringaConnessione = "Provider=Prova";
  ASSERT_TRUE(company.propose()) << company.outcome();
  const std::string simple =
      "SaldoDiversoDaZero=0;SimulaSaldoApertura=0;SimulaAmmortamenti=0;SimulaAmmCivilistico=0;TipoAmmortamento=0;"
      "SimulaRisconti=0;SimulaRimanenzeFinali=0;TipoConti=0;NumLivelli=0;Intermedi=0;PiuAttivita=0;";
  const std::string end = "PercDiRicarica=0;Situazione=2;ProvenienzaRichiestaElaborazione=1;";
  EXPECT_EQ(company.situation.calls.at(0).properties,
            "Connection;ConnectionString=Provider=Prova;Ditta=1;GruppoPdC=1;AnnoEsercizio=2025;ProgrEsercizio=1;"
            "TipoData=0;TipiMov_WhereCondition=1 = 1;" +
                simple + "MastroClienti=10010000;MastroFornitori=20010000;" + end);

  company.database->Execute("UPDATE BU01_ANABUDGET SET BU01_INDMULTIATTIVITA = 2");
  prop.CodiceSede = 4;
  prop.CodicePdcCoGeDitta = 6;
  prop.AnnoEsercizioMovimenti = 2024;
  prop.ProgressivoEsercizioMovimenti = 3;
  prop.TipoDataMovimenti = 1;
  prop.TipoMovimenti = " CG41_INDTIPOMOV IN (0, 2) ";
  prop.GestioneAmmortamenti = prop.GestioneRateiRisconti = true;
  company.session->customers = "11";
  company.session->suppliers = "22";
  ASSERT_TRUE(company.propose()) << company.outcome();
  EXPECT_EQ(company.situation.calls.at(1).properties,
            "Connection;ConnectionString=Provider=Prova;Ditta=1;SedeDaElaborare=4;GruppoPdC=6;AnnoEsercizio=2024;"
            "ProgrEsercizio=3;TipoData=2;TipiMov_WhereCondition= CG41_INDTIPOMOV IN (0, 2) ;SaldoDiversoDaZero=0;"
            "SimulaSaldoApertura=0;SimulaAmmortamenti=0;SimulaAmmCivilistico=1;TipoAmmortamento=3;SimulaRisconti=1;"
            "SimulaRimanenzeFinali=0;TipoConti=0;NumLivelli=0;Intermedi=0;PiuAttivita=1;MastroClienti=11;"
            "MastroFornitori=22;" +
                end);
}

TEST(SituazioneMese, MonthsRunFromTheFirstDateToTheLast) {
  // The movements' year, the dates and whether adjustments are wanted. These follow the last month of the movements'
  // year and no other, whatever the budget's year and the day of it that the dates end on.
  for (const auto& [question, expected] :
       inOut({"2025 20240210 20240229 0 => 20240201-20240229 ",
              "2025 20241130 20250215 0 => 20241101-20241130 20241201-20241231 20250101-20250131 20250201-20250215 ",
              "2025 20251101 20251231 1 => 20251101-20251130 20251201-20260131 ",
              "2025 20250601 20250630 1 => 20250601-20250630 ", "2024 20250601 20250630 1 => 20250601-20250731 ",
              "2024 20250601 20250610 1 => 20250601-20250731 ",
              "2024 20250601 20250715 1 => 20250601-20250731 20250701-20250715 ", "2025 20250601 20250531 0 => "})) {
    Company company;
    company.prop.AnnoEsercizioMovimenti = question.substr(0, 4);
    company.months(*Date::TryParse(question.substr(5, 8)), *Date::TryParse(question.substr(14, 8)));
    company.prop.GestioneRettifiche = question.back() == '1';
    ASSERT_TRUE(company.propose()) << question << ": " << company.outcome();
    std::string days;
    for (const auto& call : company.situation.calls) days += call.days + " ";
    EXPECT_EQ(days, expected) << question;
  }
}

TEST(SituazioneMese, TheAccountRangeIsAConditionOnGeneralLedgerBudgetsOnly) {
  const std::string column = " AND (CG42_MOVCONT.CG42_CONTOPAR_CG24 ";
  const std::vector<std::vector<std::string>> cases = {
      {"01", "50010001", "50019999", column + "BETWEEN '50010001' AND '50019999') "},
      {"01", "50010001", "", column + ">= '50010001') "},
      {"01", "", "50019999", column + "<= '50019999') "},
      {"01", "", "", ""},
      {"02", "A", "B", ""},
      {"03", "A", "", ""},
  };
  Company company;
  company.prop.AData = Date::FromYmd(2025, 1, 31);
  for (const auto& c : cases) {
    company.prop.SottoTipoBudget = c[0];
    company.prop.DaConto = c[1];
    company.prop.AConto = c[2];
    ASSERT_TRUE(company.propose()) << company.outcome();
    const auto& properties = company.situation.calls.back().properties;
    const auto at = properties.find("FiltroConto=");
    EXPECT_EQ(at == std::string::npos ? "" : properties.substr(at + 12), c[3].empty() ? "" : c[3] + ";");
  }
}

TEST(SituazioneMese, AFailureOfTheComponentIsToldInItsWordsAndLeavesNoRows) {
  Company company;
  company.everyMonth({debit("50010001", "10")});
  company.situation.failsFrom = 3;
  EXPECT_FALSE(company.propose());
  EXPECT_EQ(
      company.outcome(),
      "99 Errore in CreaRecordsetSaldiDaSituazioneEP\r\n(chiamata metodo CreaRecordsetSituazioneEconomicaPatrimoniale)"
      "\r\nStato = 7 - Errore = anno chiuso");
  EXPECT_EQ(company.situation.calls.size(), 3u);
  EXPECT_EQ(company.prop.RstSaldiElaEco->RecordCount(), 0);

  company.situation.failsFrom.reset();
  company.situation.withoutSet = true;
  EXPECT_FALSE(company.propose());
  EXPECT_EQ(company.outcome(),
            "99 The accounting situation returned no record set in BdgElaEco_PopolaRstSaldiDaSituazioneEP");

  suite::registraServizio(suite::kSituazioneContabile, [] { return std::make_shared<values::Object>(); });
  EXPECT_FALSE(company.propose());
  EXPECT_THAT(company.outcome(), testing::EndsWith(" in BdgElaEco_PopolaRstSaldiDaSituazioneEP"));
}

}  // namespace
