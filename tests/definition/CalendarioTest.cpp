#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "definition/Banco.h"
#include "definition/Calendario.h"
#include "definition/EserciziFinti.h"

namespace bukorval {
namespace {

using definition_tests::Banco;
using definition_tests::EserciziFinti;
using testing::ElementsAre;
using testing::IsEmpty;
using values::Date;
using values::Variant;

Variant data(std::string_view testo) { return testo.empty() ? Variant() : Variant(*Date::TryParse(testo)); }

struct CalendarioTest : testing::Test {
  CalendarioTest() { EserciziFinti::registra(); }
  Banco banco;
  Calendario calendario{banco.ctx};
};

TEST_F(CalendarioTest, SplitsTheYearByPeriodicity) {
  const int attesi[] = {12, 6, 4, 3, 2, 1};
  for (BdgPeriodicita p = 0; p < 6; ++p) EXPECT_EQ(values::toInt32(calendario.GetBdgNrPeriodi(p)), attesi[p]);
  EXPECT_TRUE(calendario.GetBdgNrPeriodi(6).isNull());
  EXPECT_TRUE(calendario.GetBdgNrPeriodi(-1).isNull());
}

TEST_F(CalendarioTest, GivesEveryMonthItsPeriod) {
  struct Caso {
    BdgPeriodicita periodicita;
    BdgPeriodoFiscaleSolare solare;
    const char* inizio;
    const char* periodi;  ///< of months 0 to 13, in base 16
  };
  const Caso casi[] = {
      {0, 1, "20240701", "0123456789abc0"}, {0, 0, "20240701", "0789abc1234560"}, {0, 0, "20240115", "0123456789abc0"},
      {0, 0, "20241231", "023456789abc10"}, {1, 0, "20240701", "04455661122330"}, {2, 0, "20240701", "03334441112220"},
      {2, 1, "20240701", "01112223334440"}, {3, 0, "20240301", "03311112222330"}, {4, 0, "20240701", "02222221111110"},
      {5, 0, "20240701", "01111111111110"}, {6, 1, "20240701", "00000000000000"}, {99, 0, "20240701", "00000000000000"},
      {0, 0, "", "00000000000000"},         {0, 1, "", "0123456789abc0"},
  };
  for (const auto& caso : casi) {
    std::string periodi;
    for (std::int16_t mese = 0; mese <= 13; ++mese)
      periodi += "0123456789abc"[calendario.GetBdgPeriodo(mese, caso.periodicita, caso.solare, data(caso.inizio))];
    EXPECT_EQ(periodi, caso.periodi) << caso.periodicita << " " << caso.solare << " " << caso.inizio;
  }
  EXPECT_EQ(banco.esito(), "0 ");
  EXPECT_EQ(calendario.GetBdgPeriodo(7, 0, 0, "luglio"), 0);
  EXPECT_THAT(banco.esito(), testing::MatchesRegex("99 .* in GetBdgPeriodo "));
}

TEST_F(CalendarioTest, KeepsABudgetWithinTwelveMonths) {
  struct Caso {
    const char *inizio, *fine, *budgetInizio, *budgetFine;
  };
  const Caso casi[] = {
      {"20240101", "20241231", "20240101", "20241231"},
      {"20230701", "20240630", "20230701", "20240630"},
      {"20230701", "20241231", "20230701", "20240630"},  // 18 months
      {"20240701", "20241231", "20240701", "20241231"},  // short year
      {"20230301", "20240229", "20230301", "20240229"},  // leap day
      {"20230301", "20240331", "20230301", "20240229"},  // 13 months, cut on the leap day
      {"20220301", "20230331", "20220301", "20230228"},
      {"20230115", "20240114", "20230101", "20231231"},  // touches 13 months
      {"20230115", "20231214", "20230115", "20231214"},
      {"", "", "", ""},  // no such year
  };
  for (const auto& caso : casi) {
    SCOPED_TRACE(caso.inizio + std::string("-") + caso.fine);
    EserciziFinti::inizio = data(caso.inizio);
    EserciziFinti::fine = data(caso.fine);
    Variant inizio = "prima", fine = "prima";
    calendario.GetBdgDataInizioBdgDataFine(0, "A1", 1, 2024, 1, inizio, fine);
    EXPECT_EQ(inizio, data(caso.budgetInizio));
    EXPECT_EQ(fine, data(caso.budgetFine));
    EXPECT_EQ(banco.ctx.dataInizioEsercizio, data(caso.inizio));
    EXPECT_EQ(banco.esito(), "0 ");
  }
  Variant inizio, fine;
  calendario.GetBdgDataInizioBdgDataFine(0, "A1", 1, Variant::Null(), Variant(), inizio, fine);
  EXPECT_EQ(EserciziFinti::ultimaDomanda, "DateInizioFine 1 0 0");
}

TEST_F(CalendarioTest, AsksANewYearServiceOnTheConnection) {
  EserciziFinti::anno("20240101", "20241231");
  EserciziFinti::chiuso = true;
  EXPECT_TRUE(calendario.EsisteEsercizio(1, 2024, 2));
  EXPECT_EQ(EserciziFinti::ultimaDomanda, "Esiste 1 2024 2");
  EXPECT_TRUE(calendario.EsistonoEsercizi(1, 2024));
  EXPECT_EQ(EserciziFinti::ultimaDomanda, "EsisteAnno 1 2024");
  EXPECT_TRUE(calendario.GetIsEsercizioChiuso(1, 2024, 2));
  EXPECT_EQ(EserciziFinti::ultimaDomanda, "Chiuso 1 2024 2");
  Variant inizio, fine;
  calendario.DeterminaDateInizioFineEsercizio(1, 2024, 2, inizio, fine);
  EXPECT_EQ(inizio, data("20240101"));
  EXPECT_EQ(fine, data("20241231"));
  EXPECT_EQ(EserciziFinti::creati, 4);
  EXPECT_EQ(EserciziFinti::conConnessione, 4);
  EserciziFinti::esiste = EserciziFinti::chiuso = false;
  EXPECT_FALSE(calendario.EsisteEsercizio(1, 2024, 2) || calendario.EsistonoEsercizi(1, 2024) ||
               calendario.GetIsEsercizioChiuso(1, 2024, 2));
}

TEST_F(CalendarioTest, AnswersNothingAboutYearsWithoutAConnectionOrService) {
  Variant inizio = "prima", fine = "prima";
  const std::pair<const char*, std::function<bool()>> domande[] = {
      {"EsisteEsercizio", [&] { return calendario.EsisteEsercizio(1, 2024, 1); }},
      {"EsistonoEsercizi", [&] { return calendario.EsistonoEsercizi(1, 2024); }},
      {"GetIsEsercizioChiuso", [&] { return calendario.GetIsEsercizioChiuso(1, 2024, 1); }},
      {"DeterminaDateInizioFineEsercizio",
       [&] { return calendario.DeterminaDateInizioFineEsercizio(1, 2024, 1, inizio, fine), false; }},
      {"DeterminaDateInizioFineEsercizio",
       [&] { return calendario.GetBdgDataInizioBdgDataFine(0, "A1", 1, 2024, 1, inizio, fine), false; }},
      {"GetProgressivoEsercizio", [&] { return calendario.GetProgressivoEsercizio(1, 2024) != 0; }},
      {"GetDescrizioneConto", [&] { return !calendario.GetDescrizioneConto(1, 1, 1, "100").isEmpty(); }}};
  EserciziFinti::guasto = true;
  banco.guasta();
  for (const auto& [nome, domanda] : domande) {
    EXPECT_FALSE(domanda());
    EXPECT_EQ(banco.esito(), std::string("99 boom in ") + nome);
  }
  banco.ctx.connessione(nullptr);
  for (const auto& [nome, domanda] : domande) {
    EXPECT_FALSE(domanda()) << nome;
    EXPECT_EQ(banco.ctx.stato(), bdgStatoRifiutato) << nome;
  }
  EXPECT_EQ(inizio, Variant("prima"));
  EXPECT_EQ(fine, Variant("prima"));
}

TEST_F(CalendarioTest, LabelsPeriods) {
  banco.sessione->catalogo = {{28193, "Gennaio"},      {36373, "Luglio"},   {29285, "Giugno"},
                              {22569, "Dicembre"},     {8824, "Bimestre"},  {58700, "Trimestre"},
                              {46968, "Quadrimestre"}, {51899, "Semestre"}, {6537, "Anno"}};
  EserciziFinti::anno("20230701", "20240630");
  struct Caso {
    BdgPeriodicita periodicita;
    BdgPeriodoFiscaleSolare solare;
    std::int16_t periodo;
    const char* etichetta;
  };
  const Caso casi[] = {{0, 1, 1, "Gennaio"},
                       {0, 0, 1, "Luglio"},
                       {0, 0, 6, "Dicembre"},
                       {0, 0, 7, "Gennaio"},
                       {0, 0, 12, "Giugno"},
                       {0, 1, 2, ""},
                       {0, 1, 0, ""},
                       {0, 1, 13, ""},
                       {1, 0, 3, "3° Bimestre"},
                       {2, 0, 4, "4° Trimestre"},
                       {3, 1, 2, "2° Quadrimestre"},
                       {4, 0, 1, "1° Semestre"},
                       {5, 0, 1, "Anno"},
                       {6, 0, 1, ""},
                       {99, 1, 1, ""}};
  for (const auto& caso : casi)
    EXPECT_EQ(calendario.GetDescrizionePeriodo(1, caso.periodicita, caso.solare, caso.periodo, 2024, 1),
              caso.etichetta);
  EserciziFinti::anno("20240101", "20241231");
  EXPECT_EQ(calendario.GetDescrizionePeriodo(1, 0, 0, 12, 2024, 1), "Dicembre");
}

TEST_F(CalendarioTest, NeverReportsAFailureForALabel) {
  banco.sessione->catalogo = {{28193, "Gennaio"}};
  EserciziFinti::guasto = true;
  EXPECT_EQ(calendario.GetDescrizionePeriodo(1, 0, 0, 1, 2024, 1), "");
  EXPECT_EQ(banco.esito(), "0 ");
  EserciziFinti::guasto = false;
  EXPECT_EQ(calendario.GetDescrizionePeriodo(1, 0, 0, 1, 2024, 1), "") << "a year that does not exist";
  banco.ctx.connessione(nullptr);
  EXPECT_EQ(calendario.GetDescrizionePeriodo(1, 0, 0, 1, 2024, 1), "");
  EXPECT_EQ(banco.esito(), "0 ");
  banco.prop.ActiveInterface = nullptr;
  EXPECT_EQ(calendario.GetDescrizionePeriodo(1, 2, 0, 1, 2024, 1), "1° ");
  EXPECT_EQ(banco.esito(), "0 ");
}

TEST_F(CalendarioTest, DescribesAccountsOfEveryChartKind) {
  const char* testi[] = {
      " SELECT CASE WHEN CG39_DESCR IS NULL \r\n             THEN CG24_DESCR \r\n             ELSE "
      "CG39_DESCR \r\n"
      "        END AS DESCRIZIONECONTO \r\n FROM  CG24_TABPDC WITH (NOLOCK) \r\n"
      "      LEFT OUTER JOIN CG39_PRSDESPDC WITH (NOLOCK) \r\n      ON CG39_DITTA_CG18 = 7\r\n"
      "      AND CG39_GRUPPO_CG10 = CG24_GRUPPO_CG10 \r\n      AND CG39_CONTO_CG24 = CG24_CONTO \r\n"
      " WHERE CG24_GRUPPO_CG10 = 2\r\n AND   CG24_CONTO = '6001'\r\n",
      " SELECT CG23_DESCR AS DESCRIZIONECONTO \r\n FROM   CG23_RICLBILCEE WITH (NOLOCK) \r\n"
      " WHERE  CG23_CODICE_CG21 = 2\r\n AND    CG23_CODICE = '6001'\r\n",
      " SELECT PC03_DESCR AS DESCRIZIONECONTO \r\n FROM   PC03_ANAGPDC WITH (NOLOCK) \r\n"
      " WHERE  PC03_CODICE_PC01 = 2\r\n AND    PC03_CONTO = '6001'\r\n"};
  for (BdgTipoPdc tipo = 1; tipo <= 3; ++tipo) {
    banco.db->texts.clear();
    banco.rispondi({"DESCRIZIONECONTO"}, {{"Salari"}});
    EXPECT_EQ(calendario.GetDescrizioneConto(7, tipo, 2, "6001"), Variant("Salari"));
    EXPECT_THAT(banco.db->texts, ElementsAre(testi[tipo - 1]));
  }
  banco.rispondi({"DESCRIZIONECONTO"}, {});
  EXPECT_TRUE(calendario.GetDescrizioneConto(7, 1, 2, "6001").isEmpty());
  banco.db->texts.clear();
  EXPECT_TRUE(calendario.GetDescrizioneConto(7, 4, 2, "6001").isEmpty());
  EXPECT_THAT(banco.db->texts, IsEmpty());
  EXPECT_EQ(banco.esito(), "0 ");
}

TEST_F(CalendarioTest, ReadsTheProgressiveOfAYear) {
  banco.rispondi({"CG19_PROGESER"}, {{3}, {4}});
  banco.rispondi({"CG19_PROGESER"}, {{Variant::Null()}});
  banco.rispondi({"CG19_PROGESER"}, {});
  EXPECT_EQ(calendario.GetProgressivoEsercizio(7, 2024), 3);
  EXPECT_EQ(banco.db->texts[0],
            " SELECT CG19_PROGESER \r\n FROM   CG19_ANADITTAESER WITH (NOLOCK)\r\n WHERE  CG19_DITTA_CG18 = 7\r\n"
            " AND    CG19_ANNO = 2024\r\n");
  EXPECT_EQ(calendario.GetProgressivoEsercizio(7, 2024), 0);
  EXPECT_EQ(calendario.GetProgressivoEsercizio(7, 2024), 0);
  EXPECT_EQ(banco.esito(), "0 ");
}

}  // namespace
}  // namespace bukorval
