#include "definition/CaricaDatiBudget.h"
#include "support/FakeYears.h"
#include "support/TestContext.h"

namespace {

using namespace bukorval;
using testing_support::FakeYears;

/// A budget definition that is read once, whatever is asked of it.
struct CaricaDatiTest : testing::Test, testing_support::TestContext {
  std::map<std::string, Variant> settings = {
      {"BU01_INDPERIODO", 2},  {"BU01_INDTIPOPDC", 3},       {"CODICEPDC", 12},     {"BU01_FLGSEDI", 1},
      {"BU01_NUMFORECAST", 3}, {"BU01_INDMULTIATTIVITA", 2}, {"BU01_INDPERFISO", 0}};
  CaricaDatiTest() : TestContext(5) {
    FakeYears::install("20230701", "20241231");
    session->chart = "PDCSESS";
    db->onExecute = [this](std::string_view) { define(settings); };
  }
};

TEST_F(CaricaDatiTest, LoadsTheDefinitionWithOneRead) {
  ASSERT_TRUE(GetDatiBudget(ctx)) << outcome();
  EXPECT_EQ(db->texts.size(), 1u);
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

  settings["BU01_INDPERFISO"] = 1;  // a calendar year
  ASSERT_TRUE(GetDatiBudget(ctx));
  EXPECT_EQ(values::toInt32(data.periodoIniziale), 3);
  EXPECT_EQ(values::toInt32(data.periodoFinale), 2);
}

TEST_F(CaricaDatiTest, TakesTheSessionsChartForALedgerBudget) {
  prop.TipoBudget = 0;
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
  settings["BU01_INDPERIODO"] = 99;
  ASSERT_TRUE(GetDatiBudget(ctx));
  EXPECT_TRUE(ctx.dati.periodoFinale.isEmpty());
}

TEST_F(CaricaDatiTest, StopsAtTheFirstFailureAndKeepsItsName) {
  FakeYears::broken = true;
  EXPECT_FALSE(GetDatiBudget(ctx));
  EXPECT_EQ(outcome(), "99 boom in DeterminaDateInizioFineEsercizio");
  prop.SottoTipoBudget = "  ";
  EXPECT_FALSE(GetDatiBudget(ctx));
  EXPECT_EQ(db->texts.size(), 1u);
  prop.SottoTipoBudget = "A1";
  failAlways();
  EXPECT_FALSE(GetDatiBudget(ctx));
  EXPECT_EQ(outcome(), "99 boom in GetPeriodicitaBudget");
  ctx.connessione(nullptr);
  EXPECT_FALSE(GetDatiBudget(ctx));
  EXPECT_EQ(outcome(), "1 Non è stata definita la stringa di connessione");
}

}  // namespace
