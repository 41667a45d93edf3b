#include "definition/CaricaDatiBudget.h"
#include "support/FakeYears.h"
#include "support/TestContext.h"

namespace {

using namespace bukorval;
using testing_support::FakeYears;

struct Setting {
  std::string column;
  Variant value;
  std::string procedure;
};

/// A budget definition that answers each question by the column it asks for.
struct CaricaDatiTest : testing::Test, testing_support::TestContext {
  std::size_t questions = 0;
  std::vector<Setting> settings = {{"SELECT BU01_INDPERIODO", 2, "GetPeriodicitaBudget"},
                                   {"SELECT BU01_INDTIPOPDC", 3, "GetTipoPdC"},
                                   {"AS CODICEPDC", 12, "GetCodicePdC"},
                                   {"SELECT BU01_FLGSEDI", 1, "GetGestioneSede"},
                                   {"SELECT BU01_INDMULTIATTIVITA", 2, "GetTipoGestioneMultiAttivita"},
                                   {"SELECT BU01_NUMFORECAST", 3, "GetNumeroForecast"},
                                   {"SELECT BU01_INDPERFISO", 0, "GetAnnoBudgetFiscaleSolare"}};
  CaricaDatiTest() : TestContext(5) {
    FakeYears::install("20230701", "20241231");
    session->chart = "PDCSESS";
    db->onExecute = [this](std::string_view text) {
      const auto& setting = settings.at(questions++ % settings.size());
      EXPECT_NE(text.find(setting.column), text.npos) << text;
      if (setting.value == Variant("broken")) throw values::Errore("boom");
      answer({setting.column.substr(setting.column.rfind(' ') + 1)}, {{setting.value}});
    };
  }
};

TEST_F(CaricaDatiTest, LoadsTheDefinitionInOrder) {
  ASSERT_TRUE(GetDatiBudget(ctx)) << outcome();
  EXPECT_EQ(questions, settings.size());
  const auto& data = ctx.dati;
  EXPECT_EQ(data.natura, 0);
  EXPECT_EQ(data.periodicita, 2);
  EXPECT_EQ(values::toInt32(data.numeroPeriodi), 4);
  EXPECT_EQ(data.tipoPdc, 3);
  EXPECT_EQ(data.codicePdc, Variant(12));
  EXPECT_TRUE(data.gestioneSede);
  EXPECT_EQ(data.tipoMultiAttivita, 2);
  EXPECT_EQ(data.numeroForecast, 3);
  EXPECT_EQ(data.fiscaleSolare, 0);
  EXPECT_EQ(data.dataInizio, Variant(Date::FromYmd(2023, 7, 1)));
  EXPECT_EQ(data.dataFine, Variant(Date::FromYmd(2024, 6, 30)));
  EXPECT_EQ(values::toInt32(data.periodoIniziale), 1);
  EXPECT_EQ(values::toInt32(data.periodoFinale), 4);
  EXPECT_EQ(FakeYears::lastQuestion, "DateInizioFine 99 2024 1");

  settings.back().value = 1;  // a calendar year
  ASSERT_TRUE(GetDatiBudget(ctx));
  EXPECT_EQ(values::toInt32(data.periodoIniziale), 3);
  EXPECT_EQ(values::toInt32(data.periodoFinale), 2);
}

TEST_F(CaricaDatiTest, TakesTheSessionsChartForALedgerBudget) {
  prop.TipoBudget = 0;
  settings.erase(settings.begin() + 1, settings.begin() + 3);
  ASSERT_TRUE(GetDatiBudget(ctx));
  EXPECT_EQ(ctx.dati.tipoPdc, bdgPdcCoGe);
  EXPECT_EQ(ctx.dati.codicePdc, Variant("PDCSESS"));
  EXPECT_EQ(prop.CodicePdcCoGeDitta, Variant("PDCSESS"));
}

TEST_F(CaricaDatiTest, LeavesThePeriodsOpenWithoutDatesOrPeriodicity) {
  ASSERT_TRUE(GetDatiBudget(ctx));
  FakeYears::year("", "");
  ASSERT_TRUE(GetDatiBudget(ctx));
  EXPECT_TRUE(ctx.dati.dataInizio.isEmpty());
  EXPECT_TRUE(ctx.dati.periodoIniziale.isEmpty());
  FakeYears::year("20240101", "20241231");
  settings.front().value = 99;
  ASSERT_TRUE(GetDatiBudget(ctx));
  EXPECT_TRUE(ctx.dati.periodoFinale.isEmpty());
}

TEST_F(CaricaDatiTest, StopsAtTheFirstFailureAndKeepsItsName) {
  const auto good = settings;
  for (std::size_t i = 0; i < good.size(); ++i) {
    settings = good;
    settings[i].value = "broken";
    questions = 0;
    EXPECT_FALSE(GetDatiBudget(ctx));
    EXPECT_EQ(outcome(), "99 boom in " + good[i].procedure);
    EXPECT_EQ(questions, i + 1);
  }
  settings = good;
  questions = 0;
  FakeYears::broken = true;
  EXPECT_FALSE(GetDatiBudget(ctx));
  EXPECT_EQ(outcome(), "99 boom in DeterminaDateInizioFineEsercizio");
  prop.SottoTipoBudget = "  ";
  questions = 0;
  EXPECT_FALSE(GetDatiBudget(ctx));
  EXPECT_EQ(questions, 0u);
  prop.SottoTipoBudget = "A1";
  ctx.connessione(nullptr);
  EXPECT_FALSE(GetDatiBudget(ctx));
  EXPECT_EQ(outcome(), "1 Non è stata definita la stringa di connessione");
}

}  // namespace
