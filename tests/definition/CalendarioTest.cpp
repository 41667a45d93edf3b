#include "definition/Calendario.h"
#include "support/Expected.h"
#include "support/FakeYears.h"
#include "support/TestContext.h"

namespace {

using namespace bukorval;
using testing_support::expected, testing_support::FakeYears;

Variant date(std::string_view text) { return text.empty() ? Variant() : Variant(*Date::TryParse(text)); }

struct CalendarioTest : testing::Test, testing_support::TestContext {
  CalendarioTest() { FakeYears::install(); }
  Calendario calendar{ctx};
};

TEST_F(CalendarioTest, SplitsTheYearByPeriodicity) {
  const int expected[] = {12, 6, 4, 3, 2, 1};
  for (BdgPeriodicita p = 0; p < 6; ++p) EXPECT_EQ(values::toInt32(calendar.GetBdgNrPeriodi(p)), expected[p]);
  EXPECT_TRUE(calendar.GetBdgNrPeriodi(6).isNull());
  EXPECT_TRUE(calendar.GetBdgNrPeriodi(-1).isNull());
}

TEST_F(CalendarioTest, GivesEveryMonthItsPeriod) {
  const struct {
    BdgPeriodicita periodicity;
    BdgPeriodoFiscaleSolare calendarYear;
    const char* start;
    const char* periods;  ///< of months 0 to 13, in base 16
  } rows[] = {
      {0, 1, "20240701", "0123456789abc0"}, {0, 0, "20240701", "0789abc1234560"}, {0, 0, "20240115", "0123456789abc0"},
      {0, 0, "20241231", "023456789abc10"}, {1, 0, "20240701", "04455661122330"}, {2, 0, "20240701", "03334441112220"},
      {2, 1, "20240701", "01112223334440"}, {3, 0, "20240301", "03311112222330"}, {4, 0, "20240701", "02222221111110"},
      {5, 0, "20240701", "01111111111110"}, {6, 1, "20240701", "00000000000000"}, {99, 0, "20240701", "00000000000000"},
      {0, 0, "", "00000000000000"},         {0, 1, "", "0123456789abc0"},
  };
  for (const auto& row : rows) {
    std::string periods;
    for (std::int16_t month = 0; month <= 13; ++month)
      periods += "0123456789abc"[calendar.GetBdgPeriodo(month, row.periodicity, row.calendarYear, date(row.start))];
    EXPECT_EQ(periods, row.periods) << row.periodicity << " " << row.calendarYear << " " << row.start;
  }
  EXPECT_EQ(outcome(), "0 ");
  EXPECT_EQ(calendar.GetBdgPeriodo(7, 0, 0, "luglio"), 0);
  EXPECT_THAT(outcome(), testing::MatchesRegex("99 .* in GetBdgPeriodo "));
}

TEST_F(CalendarioTest, KeepsABudgetWithinTwelveMonths) {
  // 18 months; a short year; a leap day; 13 months, cut on the leap day and before it; 13 months touched; 11.
  for (const auto& [year, budget] :
       inOut({"20240101 20241231 => 20240101 20241231", "20230701 20241231 => 20230701 20240630",
              "20240701 20241231 => 20240701 20241231", "20230301 20240229 => 20230301 20240229",
              "20230301 20240331 => 20230301 20240229", "20220301 20230331 => 20220301 20230228",
              "20230115 20240114 => 20230101 20231231", "20230115 20231214 => 20230115 20231214"})) {
    SCOPED_TRACE(year);
    FakeYears::year(year.substr(0, 8), year.substr(9));
    Variant first = "before", last = "before";
    calendar.GetBdgDataInizioBdgDataFine(0, "A1", 1, 2024, 1, first, last);
    EXPECT_EQ(first, date(budget.substr(0, 8)));
    EXPECT_EQ(last, date(budget.substr(9)));
    EXPECT_EQ(ctx.dataInizioEsercizio, FakeYears::first);
    EXPECT_EQ(outcome(), "0 ");
  }
  FakeYears::year("", "");
  Variant first = "before", last = "before";
  calendar.GetBdgDataInizioBdgDataFine(0, "A1", 1, Variant::Null(), Variant(), first, last);
  EXPECT_EQ(FakeYears::lastQuestion, "DateInizioFine 1 0 0");
  EXPECT_TRUE(first.isEmpty() && last.isEmpty()) << "no such year";
}

TEST_F(CalendarioTest, AsksANewYearServiceOnTheConnection) {
  FakeYears::year("20240101", "20241231");
  Variant first, last;
  calendar.DeterminaDateInizioFineEsercizio(1, 2024, 2, first, last);
  EXPECT_EQ(FakeYears::lastQuestion, "DateInizioFine 1 2024 2");
  EXPECT_EQ(first, date("20240101"));
  EXPECT_EQ(last, date("20241231"));
  for (const bool answer : {true, false}) {
    FakeYears::exists = FakeYears::closed = answer;
    EXPECT_EQ(calendar.EsisteEsercizio(1, 2024, 2), answer);
    EXPECT_EQ(FakeYears::lastQuestion, "Esiste 1 2024 2");
    EXPECT_EQ(calendar.EsistonoEsercizi(1, 2024), answer);
    EXPECT_EQ(FakeYears::lastQuestion, "EsisteAnno 1 2024");
    EXPECT_EQ(calendar.GetIsEsercizioChiuso(1, 2024, 2), answer);
    EXPECT_EQ(FakeYears::lastQuestion, "Chiuso 1 2024 2");
  }
  EXPECT_EQ(FakeYears::made, 7);
  EXPECT_EQ(FakeYears::connected, 7);
}

TEST_F(CalendarioTest, AnswersNothingAboutYearsWithoutAConnectionOrService) {
  Variant first = "before", last = "before";
  const std::pair<const char*, std::function<bool()>> questions[] = {
      {"EsisteEsercizio", [&] { return calendar.EsisteEsercizio(1, 2024, 1); }},
      {"EsistonoEsercizi", [&] { return calendar.EsistonoEsercizi(1, 2024); }},
      {"GetIsEsercizioChiuso", [&] { return calendar.GetIsEsercizioChiuso(1, 2024, 1); }},
      {"DeterminaDateInizioFineEsercizio",
       [&] { return calendar.DeterminaDateInizioFineEsercizio(1, 2024, 1, first, last), false; }},
      {"DeterminaDateInizioFineEsercizio",
       [&] { return calendar.GetBdgDataInizioBdgDataFine(0, "A1", 1, 2024, 1, first, last), false; }},
      {"GetProgressivoEsercizio", [&] { return calendar.GetProgressivoEsercizio(1, 2024) != 0; }},
      {"GetDescrizioneConto", [&] { return !calendar.GetDescrizioneConto(1, 1, 1, "100").isEmpty(); }}};
  FakeYears::broken = true;
  failAlways();
  for (const auto& [name, question] : questions) {
    EXPECT_FALSE(question());
    EXPECT_EQ(outcome(), std::string("99 boom in ") + name);
  }
  ctx.connessione(nullptr);
  for (const auto& [name, question] : questions) {
    EXPECT_FALSE(question()) << name;
    EXPECT_EQ(ctx.stato(), bdgStatoRifiutato) << name;
  }
  EXPECT_EQ(first, Variant("before"));
  EXPECT_EQ(last, Variant("before"));
}

TEST_F(CalendarioTest, LabelsPeriods) {
  session->catalogue = {{28193, "Gennaio"},      {36373, "Luglio"},   {29285, "Giugno"},
                        {22569, "Dicembre"},     {8824, "Bimestre"},  {58700, "Trimestre"},
                        {46968, "Quadrimestre"}, {51899, "Semestre"}, {6537, "Anno"}};
  FakeYears::year("20230701", "20240630");
  // Periodicity, calendar year, period.
  for (const auto& [question, label] :
       inOut({"0 1 1 => Gennaio", "0 0 1 => Luglio", "0 0 6 => Dicembre", "0 0 7 => Gennaio", "0 0 12 => Giugno",
              "0 1 2 => ", "0 1 0 => ", "0 1 13 => ", "1 0 3 => 3° Bimestre", "2 0 4 => 4° Trimestre",
              "3 1 2 => 2° Quadrimestre", "4 0 1 => 1° Semestre", "5 0 1 => Anno", "6 0 1 => ", "9 1 1 => "}))
    EXPECT_EQ(calendar.GetDescrizionePeriodo(1, static_cast<BdgPeriodicita>(question[0] - '0'), question[2] - '0',
                                             static_cast<std::int16_t>(std::stoi(question.substr(4))), 2024, 1),
              label)
        << question;
  FakeYears::year("20240101", "20241231");
  EXPECT_EQ(calendar.GetDescrizionePeriodo(1, 0, 0, 12, 2024, 1), "Dicembre");
}

TEST_F(CalendarioTest, NeverReportsAFailureForALabel) {
  session->catalogue = {{28193, "Gennaio"}};
  FakeYears::broken = true;
  EXPECT_EQ(calendar.GetDescrizionePeriodo(1, 0, 0, 1, 2024, 1), "");
  EXPECT_EQ(outcome(), "0 ");
  FakeYears::broken = false;
  EXPECT_EQ(calendar.GetDescrizionePeriodo(1, 0, 0, 1, 2024, 1), "") << "a year that does not exist";
  ctx.connessione(nullptr);
  EXPECT_EQ(calendar.GetDescrizionePeriodo(1, 0, 0, 1, 2024, 1), "");
  prop.ActiveInterface = nullptr;
  EXPECT_EQ(calendar.GetDescrizionePeriodo(1, 2, 0, 1, 2024, 1), "1° ");
  EXPECT_EQ(outcome(), "0 ");
}

TEST_F(CalendarioTest, DescribesAccountsOfEveryChartKind) {
  const char* names[] = {"conti_generali", "conti_di_bilancio", "conti_analitici"};
  for (BdgTipoPdc kind = 1; kind <= 3; ++kind) {
    answer({"DESCRIZIONECONTO"}, {{"Salari"}});
    EXPECT_EQ(calendar.GetDescrizioneConto(7, kind, 2, "6001"), Variant("Salari"));
    EXPECT_EQ(db->texts.back(), expected("definition/expected/" + std::string(names[kind - 1]) + ".sql"));
  }
  answer({"DESCRIZIONECONTO"}, {});
  EXPECT_TRUE(calendar.GetDescrizioneConto(7, 1, 2, "6001").isEmpty());
  EXPECT_TRUE(calendar.GetDescrizioneConto(7, 4, 2, "6001").isEmpty());
  EXPECT_EQ(db->texts.size(), 4u);
  EXPECT_EQ(outcome(), "0 ");
}

TEST_F(CalendarioTest, ReadsTheProgressiveOfAYear) {
  answer({"CG19_PROGESER"}, {{3}, {4}});
  answer({"CG19_PROGESER"}, {{Variant::Null()}});
  answer({"CG19_PROGESER"}, {});
  EXPECT_EQ(calendar.GetProgressivoEsercizio(7, 2024), 3);
  EXPECT_EQ(db->texts[0],
            " SELECT CG19_PROGESER \r\n FROM   CG19_ANADITTAESER WITH (NOLOCK)\r\n WHERE  CG19_DITTA_CG18 = 7\r\n"
            " AND    CG19_ANNO = 2024\r\n");
  EXPECT_EQ(calendar.GetProgressivoEsercizio(7, 2024), 0);
  EXPECT_EQ(calendar.GetProgressivoEsercizio(7, 2024), 0);
  EXPECT_EQ(outcome(), "0 ");
}

}  // namespace
