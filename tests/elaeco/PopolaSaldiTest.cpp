// From the component's balances to the proposed rows.

#include "elaeco/Company.h"
#include "elaeco/InsiemiSaldi.h"
#include "elaeco/PopolaSaldi.h"
#include "support/FaultConnection.h"

namespace {

using namespace elaeco_tests;
using testing::ElementsAre, testing_support::rows;

TEST(PopolaSaldi, EveryAccountHasARowForEveryPeriodInTheOrderItAppeared) {
  Company company;
  company.prop.AData = Date::FromYmd(2025, 5, 31);
  company.situation.balances = [](const std::string& from) -> std::vector<Balance> {
    if (from == "20250101") return {credit("70010001", "100.10"), debit("50010001", "0.05")};
    if (from == "20250201") return {debit("70010001", "0.10"), {"50010002", Variant::Null(), Variant::Null()}};
    if (from == "20250501") return {debit("50010001", "-3"), credit("70010001", "-2"), debit("50010001", "1")};
    return {};
  };
  ASSERT_TRUE(company.propose()) << company.outcome();
  EXPECT_THAT(company.proposals(),
              ElementsAre("70010001 1 -100.00 0 1", "70010001 2 2.00 0 1", "70010001 3 0.00 0 1", "70010001 4 0.00 0 1",
                          "50010001 1 0.05 0 1", "50010001 2 -2.00 0 1", "50010001 3 0.00 0 1", "50010001 4 0.00 0 1",
                          "50010002 1 0.00 0 1", "50010002 2 0.00 0 1", "50010002 3 0.00 0 1", "50010002 4 0.00 0 1"));
  const auto ids = Company::texts(*company.prop.RstSaldiElaEco, {"ID"});
  EXPECT_EQ(std::set(ids.begin(), ids.end()).size(), 12u);
  EXPECT_THAT(ids, testing::Each(testing::SizeIs(36)));
  const auto descriptions = Company::texts(*company.prop.RstSaldiElaEco, {"DESCRIZIONE"});
  EXPECT_THAT(std::set(descriptions.begin(), descriptions.end()), ElementsAre("Merci", "Servizi", "Vendite"));
  EXPECT_THAT(company.events, ElementsAre("Lettura dei saldi contabili 5", "1", "2", "3", "4", "5", "end",
                                          "Preparazione dei saldi per periodo 3", "1", "2", "3", "end"));
}

TEST(PopolaSaldi, PeriodsTakeTheirMonthsWhateverMonthTheYearBeginsWith) {
  // Month m of the calendar carries m cents, so that a sum tells which months it holds.
  const struct {
    int periodicity;
    std::vector<std::string> january, july;
  } cases[] = {
      {1, {"0.03", "0.07", "0.11", "0.15", "0.19", "0.23"}, {"0.15", "0.19", "0.23", "0.03", "0.07", "0.11"}},
      {2, {"0.06", "0.15", "0.24", "0.33"}, {"0.24", "0.33", "0.06", "0.15"}},
      {3, {"0.10", "0.26", "0.42"}, {"0.34", "0.26", "0.18"}},
      {4, {"0.21", "0.57"}, {"0.57", "0.21"}},
      {5, {"0.78"}, {"0.78"}},
      {0, {}, {}},
  };
  Company company;
  company.situation.balances = [](const std::string& from) {
    return std::vector{debit("50010001", ("0." + from.substr(4, 2)).c_str())};
  };
  for (const auto& c : cases) {
    company.periodicity(c.periodicity);
    company.prop.AnnoEsercizio = 2025;
    company.months(Date::FromYmd(2025, 1, 1), Date::FromYmd(2025, 12, 31));
    ASSERT_TRUE(company.propose()) << company.outcome();
    EXPECT_EQ(Company::texts(*company.prop.RstSaldiElaEco, {"IMPORTO"}), c.january) << c.periodicity;
    company.prop.AnnoEsercizio = 2024;
    company.months(Date::FromYmd(2024, 7, 1), Date::FromYmd(2025, 6, 30));
    ASSERT_TRUE(company.propose()) << company.outcome();
    EXPECT_EQ(Company::texts(*company.prop.RstSaldiElaEco, {"IMPORTO"}), c.july) << c.periodicity;
  }
}

TEST(PopolaSaldi, AccountsOutsideTheRangeAreSkippedEvenWhenTheComponentReturnsThem) {
  Company company;
  company.periodicity(5);
  company.prop.AData = Date::FromYmd(2025, 1, 31);
  company.everyMonth({debit("50010001", "1"), debit("50010002", "2"), debit("70010001", "3")});
  const std::vector<std::vector<std::string>> cases = {{"50010002", "50010002", "50010002 1 2.00 0 1"},
                                                       {"50010003", "", "70010001 1 3.00 0 1"},
                                                       {"", "50010001", "50010001 1 1.00 0 1"}};
  for (const auto& c : cases) {
    company.prop.DaConto = c[0];
    company.prop.AConto = c[1];
    ASSERT_TRUE(company.propose()) << company.outcome();
    EXPECT_THAT(company.proposals(), ElementsAre(c[2]));
  }
}

TEST(PopolaSaldi, EveryMonthIsRaisedByItsOwnPercentageAndRounded) {
  Company company;
  company.prop.AData = Date::FromYmd(2025, 3, 31);
  company.everyMonth({debit("50010001", "10.10")});
  const auto first = [&](bukorval::BdgTipoScostamento kind) {
    company.prop.TipoScostamento = kind;
    EXPECT_TRUE(company.propose()) << company.outcome();
    return company.proposals().front();
  };
  company.prop.PercentualeScostamento = -25;
  EXPECT_EQ(first(bukorval::bdgScostamentoNessuno), "50010001 1 30.30 0 1");
  EXPECT_EQ(first(bukorval::bdgScostamentoFisso), "50010001 1 22.74 0 1");  // three times 7.575, each made 7.58
  company.prop.RstScostPerConto =
      rows({"CONTO", "FLGPERIODI", "PERCSCOST"}, {{"50000000", 0, 100}, {"50010001", 1, 0}});
  company.prop.RstScostPerPeriodo = rows({"CONTO", "PERIODO", "PERCSCOST"}, {{"50010001", 2, "-50,0"}});
  // 20.20 + 5.05 + 20.20: the group's where the month has none.
  EXPECT_EQ(first(bukorval::bdgScostamentoPerConto), "50010001 1 45.45 0 1");
  EXPECT_EQ(first(1), "50010001 1 30.30 0 1");
}

TEST(PopolaSaldi, RowsWhoseCardHoldsAnAmountAreMarked) {
  Company company;
  company.periodicity(4);
  company.everyMonth({debit("50010001", "1")});
  const auto expectPresent = [&](const char* first, const char* second) {
    ASSERT_TRUE(company.propose()) << company.outcome();
    EXPECT_THAT(company.proposals(),
                ElementsAre(std::string("50010001 1 6.00 ") + first, std::string("50010001 2 6.00 ") + second));
  };
  company.card("50010001", 0, 1, "0");
  company.card("50010001", 0, 2, "NULL");
  expectPresent("1 0", "0 1");
  company.prop.TipoDettaglioDestinazione = 3;
  expectPresent("0 1", "0 1");
  company.prop.TipoDettaglioDestinazione = 0;
  company.prop.CodiceSede = 2;
  expectPresent("0 1", "0 1");  // another site's card is not looked at
  company.card("50010001", 0, 2, "9", "2");
  expectPresent("0 1", "1 0");
}

TEST(PopolaSaldi, BudgetsOnOtherChartsTakeBalancesThroughTheirLinks) {
  Company company;
  company.prop.AData = Date::FromYmd(2025, 7, 31);
  company.situation.balances = [](const std::string& from) -> std::vector<Balance> {
    if (from == "20250101") return {debit("50010001", "5"), credit("70010001", "20"), debit("50010002", "99")};
    if (from == "20250701") return {credit("50010001", "1"), credit("70010001", "0.01"), debit("70010001", "0.01")};
    return {};
  };
  // A negative balance of goods goes to the revenues, services have no link, sales of 0 have none for their sign.
  company.prop.SottoTipoBudget = "02";
  ASSERT_TRUE(company.propose()) << company.outcome();
  EXPECT_THAT(company.proposals(),
              ElementsAre("B06 1 5.00 0 1", "B06 2 0.00 0 1", "A01 1 -20.00 0 1", "A01 2 -1.00 0 1"));
  company.prop.DaConto = "A";
  company.prop.AConto = "A99";
  ASSERT_TRUE(company.propose()) << company.outcome();
  EXPECT_THAT(company.proposals(), ElementsAre("A01 1 -20.00 0 1", "A01 2 -1.00 0 1"));
  company.prop.SottoTipoBudget = "03";
  company.prop.DaConto = company.prop.AConto = {};
  ASSERT_TRUE(company.propose()) << company.outcome();
  EXPECT_THAT(company.proposals(), ElementsAre("MARGINE 1 -15.00 0 1"));
  EXPECT_THAT(Company::texts(*company.prop.RstSaldiElaEco, {"DESCRIZIONE"}), ElementsAre("Margine"));
}

TEST(PopolaSaldi, WithoutBalancesTheSetsAreNewAndEmpty) {
  Company company;
  company.everyMonth({debit("50010001", "1")});
  ASSERT_TRUE(company.propose());
  const auto before = company.prop.RstSaldiElaEco;
  company.everyMonth({});
  ASSERT_TRUE(company.propose()) << company.outcome();
  EXPECT_NE(company.prop.RstSaldiElaEco, before);
  EXPECT_EQ(company.prop.RstSaldiElaEco->RecordCount(), 0);
  EXPECT_EQ(company.prop.RstContiNonPresentiInStruttura->RecordCount(), 0);
  EXPECT_EQ(before->RecordCount(), 4);
}

TEST(PopolaSaldi, MissingInputsAndFailuresAreTold) {
  Company company;
  company.prop.TipoMovimenti.clear();
  EXPECT_FALSE(company.propose());
  EXPECT_EQ(company.outcome(), "1 Tipo movimento da elaborare  : Dato non definito nel BO ");
  company.prop.TipoMovimenti = "1 = 1";
  company.prop.DaData = "ieri";
  EXPECT_FALSE(company.propose());
  EXPECT_THAT(company.outcome(), testing::MatchesRegex("99 .* in BdgElaEco_PopolaRstSaldiDaSituazioneEP"));
  company.prop.DaData = Date::FromYmd(2025, 1, 1);
  company.everyMonth({debit("50010001", "1000000000000")});  // twelve of them do not fit 13 digits
  company.periodicity(5);
  EXPECT_FALSE(company.propose());
  EXPECT_THAT(company.outcome(), testing::StartsWith("99 "));
  // Every statement of a run fails in turn.
  company.everyMonth({debit("50010001", "1")});
  company.prop.AData = Date::FromYmd(2025, 1, 31);
  int k = 1;
  for (;; ++k) {
    auto broken = std::make_shared<testing_support::FaultConnection>(company.database);
    broken->failAt = k;
    company.ctx.connessione(broken);
    if (company.propose()) break;
    EXPECT_THAT(company.outcome(), testing::MatchesRegex("99 injected fault in [A-Za-z0-9_]+ ?")) << k;
  }
  EXPECT_GT(k, 4);
}

TEST(PopolaSaldi, DistinctValuesAreThoseTheFilterShows) {
  testing_support::TestContext context;
  const auto set = rows({"CONTO", "MESE"}, {{"B", 1}, {"A", 1}, {"B", 2}, {"C", 2}});
  set->Filter("MESE = 1");
  const auto found = bukorval::BdgElaEco_ValoriDistinti(context.ctx, *set, "CONTO");
  EXPECT_THAT(found->Keys(), ElementsAre(Variant("B"), Variant("A")));
  set->Filter("MESE = 3");
  EXPECT_EQ(bukorval::BdgElaEco_ValoriDistinti(context.ctx, *set, "CONTO")->Count(), 0u);
  set->Filter("");
  bukorval::BdgElaEco_ValoriDistinti(context.ctx, *set, "NIENTE");
  EXPECT_THAT(context.ctx.errore(), testing::EndsWith(" in BdgElaEco_ValoriDistinti"));
}

}  // namespace
