// From the component's balances to the proposed rows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "elaeco/Azienda.h"
#include "elaeco/InsiemiSaldi.h"

namespace elaeco_tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::rows;
using values::Date;

/// The same balance every month for one account.
auto ogniMese(const char* conto, const char* importo) {
  return [=](const std::string&) { return std::vector{dare(conto, importo)}; };
}

TEST(PopolaSaldi, EveryAccountHasARowForEveryPeriodInTheOrderItAppeared) {
  Azienda azienda;
  azienda.prop.AData = Date::FromYmd(2025, 5, 31);
  azienda.situazione.saldi = [](const std::string& da) -> std::vector<Saldo> {
    if (da == "20250101") return {avere("70010001", "100.10"), dare("50010001", "0.05")};
    if (da == "20250201") return {dare("70010001", "0.10"), {"50010002", Variant::Null(), Variant::Null()}};
    if (da == "20250501") return {dare("50010001", "-3"), avere("70010001", "-2"), dare("50010001", "1")};
    return {};
  };
  ASSERT_TRUE(azienda.popola()) << azienda.esito();
  EXPECT_THAT(azienda.proposte(),
              ElementsAre("70010001 1 -100.00 0 1", "70010001 2 2.00 0 1", "70010001 3 0.00 0 1", "70010001 4 0.00 0 1",
                          "50010001 1 0.05 0 1", "50010001 2 -2.00 0 1", "50010001 3 0.00 0 1", "50010001 4 0.00 0 1",
                          "50010002 1 0.00 0 1", "50010002 2 0.00 0 1", "50010002 3 0.00 0 1", "50010002 4 0.00 0 1"));
  std::set<std::string> identita, descrizioni;
  auto& righe = *azienda.prop.RstSaldiElaEco;
  for (; !righe.Eof(); righe.MoveNext()) {
    identita.insert(values::toPlainText(righe["ID"].Value()));
    descrizioni.insert(values::toPlainText(righe["DESCRIZIONE"].Value()));
    EXPECT_EQ(values::toPlainText(righe["ID"].Value()).size(), 36u);
  }
  EXPECT_EQ(identita.size(), 12u);
  EXPECT_THAT(descrizioni, ElementsAre("Merci", "Servizi", "Vendite"));
  EXPECT_THAT(azienda.avvenuti, ElementsAre("Lettura dei saldi contabili 5", "1", "2", "3", "4", "5", "end",
                                            "Preparazione dei saldi per periodo 3", "1", "2", "3", "end"));
}

TEST(PopolaSaldi, PeriodsTakeTheirMonthsWhateverMonthTheYearBeginsWith) {
  // Month m of the calendar carries m cents, so that a sum tells which months it holds.
  struct Caso {
    int periodicita;
    std::vector<std::string> gennaio, luglio;
  };
  const Caso casi[] = {
      {1, {"0.03", "0.07", "0.11", "0.15", "0.19", "0.23"}, {"0.15", "0.19", "0.23", "0.03", "0.07", "0.11"}},
      {2, {"0.06", "0.15", "0.24", "0.33"}, {"0.24", "0.33", "0.06", "0.15"}},
      {3, {"0.10", "0.26", "0.42"}, {"0.34", "0.26", "0.18"}},
      {4, {"0.21", "0.57"}, {"0.57", "0.21"}},
      {5, {"0.78"}, {"0.78"}},
      {0, {}, {}},
  };
  Azienda azienda;
  azienda.situazione.saldi = [](const std::string& da) {
    return std::vector{dare("50010001", ("0." + da.substr(4, 2)).c_str())};
  };
  for (const auto& caso : casi) {
    azienda.definisci(caso.periodicita);
    for (const bool luglio : {false, true}) {
      azienda.prop.AnnoEsercizio = luglio ? 2024 : 2025;
      azienda.prop.DaData = luglio ? Date::FromYmd(2024, 7, 1) : Date::FromYmd(2025, 1, 1);
      azienda.prop.AData = luglio ? Date::FromYmd(2025, 6, 30) : Date::FromYmd(2025, 12, 31);
      ASSERT_TRUE(azienda.popola()) << azienda.esito();
      std::vector<std::string> importi;
      auto& righe = *azienda.prop.RstSaldiElaEco;
      for (; !righe.Eof(); righe.MoveNext()) importi.push_back(values::toPlainText(righe["IMPORTO"].Value()));
      EXPECT_EQ(importi, luglio ? caso.luglio : caso.gennaio) << caso.periodicita;
    }
  }
}

TEST(PopolaSaldi, AccountsOutsideTheRangeAreSkippedEvenWhenTheComponentReturnsThem) {
  Azienda azienda;
  azienda.definisci(5);
  azienda.prop.AData = Date::FromYmd(2025, 1, 31);
  azienda.situazione.saldi = [](const std::string&) {
    return std::vector{dare("50010001", "1"), dare("50010002", "2"), dare("70010001", "3")};
  };
  const std::vector<std::vector<std::string>> casi = {{"50010002", "50010002", "50010002 1 2.00 0 1"},
                                                      {"50010003", "", "70010001 1 3.00 0 1"},
                                                      {"", "50010001", "50010001 1 1.00 0 1"}};
  for (const auto& caso : casi) {
    azienda.prop.DaConto = caso[0];
    azienda.prop.AConto = caso[1];
    ASSERT_TRUE(azienda.popola()) << azienda.esito();
    EXPECT_THAT(azienda.proposte(), ElementsAre(caso[2]));
  }
}

TEST(PopolaSaldi, EveryMonthIsRaisedByItsOwnPercentageAndRounded) {
  Azienda azienda;
  azienda.prop.AData = Date::FromYmd(2025, 3, 31);
  azienda.situazione.saldi = ogniMese("50010001", "10.10");
  const auto primo = [&] {
    EXPECT_TRUE(azienda.popola()) << azienda.esito();
    return azienda.proposte().front();
  };
  azienda.prop.PercentualeScostamento = -25;
  EXPECT_EQ(primo(), "50010001 1 30.30 0 1");
  azienda.prop.TipoScostamento = bukorval::bdgScostamentoFisso;
  EXPECT_EQ(primo(), "50010001 1 22.74 0 1");  // three times 7.575, each rounded to 7.58
  azienda.prop.TipoScostamento = bukorval::bdgScostamentoPerConto;
  azienda.prop.RstScostPerConto =
      rows({"CONTO", "FLGPERIODI", "PERCSCOST"}, {{"50000000", 0, 100}, {"50010001", 1, 0}});
  azienda.prop.RstScostPerPeriodo = rows({"CONTO", "PERIODO", "PERCSCOST"}, {{"50010001", 2, "-50,0"}});
  EXPECT_EQ(primo(), "50010001 1 45.45 0 1");  // 20.20 + 5.05 + 20.20: the group's where the month has none
  azienda.prop.TipoScostamento = 1;
  EXPECT_EQ(primo(), "50010001 1 30.30 0 1");
}

TEST(PopolaSaldi, RowsWhoseCardHoldsAnAmountAreMarked) {
  Azienda azienda;
  azienda.definisci(4);
  azienda.situazione.saldi = ogniMese("50010001", "1");
  azienda.scheda("50010001", 0, 1, "0");
  azienda.scheda("50010001", 0, 2, "NULL");
  ASSERT_TRUE(azienda.popola()) << azienda.esito();
  EXPECT_THAT(azienda.proposte(), ElementsAre("50010001 1 6.00 1 0", "50010001 2 6.00 0 1"));
  azienda.prop.TipoDettaglioDestinazione = 3;
  ASSERT_TRUE(azienda.popola()) << azienda.esito();
  EXPECT_THAT(azienda.proposte(), ElementsAre("50010001 1 6.00 0 1", "50010001 2 6.00 0 1"));
  // Another site's card is not looked at.
  azienda.prop.TipoDettaglioDestinazione = 0;
  azienda.prop.CodiceSede = 2;
  ASSERT_TRUE(azienda.popola()) << azienda.esito();
  EXPECT_THAT(azienda.proposte(), ElementsAre("50010001 1 6.00 0 1", "50010001 2 6.00 0 1"));
  azienda.scheda("50010001", 0, 2, "9", "2");
  ASSERT_TRUE(azienda.popola()) << azienda.esito();
  EXPECT_THAT(azienda.proposte(), ElementsAre("50010001 1 6.00 0 1", "50010001 2 6.00 1 0"));
}

TEST(PopolaSaldi, BudgetsOnOtherChartsTakeBalancesThroughTheirLinks) {
  Azienda azienda;
  azienda.prop.AData = Date::FromYmd(2025, 7, 31);
  azienda.situazione.saldi = [](const std::string& da) -> std::vector<Saldo> {
    if (da == "20250101") return {dare("50010001", "5"), avere("70010001", "20"), dare("50010002", "99")};
    if (da == "20250701") return {avere("50010001", "1"), avere("70010001", "0.01"), dare("70010001", "0.01")};
    return {};
  };
  // A negative balance of goods goes to the revenues, services have no link, sales of 0 have none for their sign.
  azienda.prop.SottoTipoBudget = "02";
  ASSERT_TRUE(azienda.popola()) << azienda.esito();
  EXPECT_THAT(azienda.proposte(),
              ElementsAre("B06 1 5.00 0 1", "B06 2 0.00 0 1", "A01 1 -20.00 0 1", "A01 2 -1.00 0 1"));
  azienda.prop.DaConto = "A";
  azienda.prop.AConto = "A99";
  ASSERT_TRUE(azienda.popola()) << azienda.esito();
  EXPECT_THAT(azienda.proposte(), ElementsAre("A01 1 -20.00 0 1", "A01 2 -1.00 0 1"));
  azienda.prop.SottoTipoBudget = "03";
  azienda.prop.DaConto = azienda.prop.AConto = {};
  ASSERT_TRUE(azienda.popola()) << azienda.esito();
  EXPECT_THAT(azienda.proposte(), ElementsAre("MARGINE 1 -15.00 0 1"));
  EXPECT_EQ(values::toPlainText((*azienda.prop.RstSaldiElaEco)["DESCRIZIONE"].Value()), "Margine");
}

TEST(PopolaSaldi, WithoutBalancesTheSetsAreNewAndEmpty) {
  Azienda azienda;
  azienda.situazione.saldi = ogniMese("50010001", "1");
  ASSERT_TRUE(azienda.popola());
  const auto prima = azienda.prop.RstSaldiElaEco;
  azienda.situazione.saldi = [](const std::string&) { return std::vector<Saldo>{}; };
  ASSERT_TRUE(azienda.popola()) << azienda.esito();
  EXPECT_NE(azienda.prop.RstSaldiElaEco, prima);
  EXPECT_THAT(azienda.proposte(), IsEmpty());
  EXPECT_EQ(azienda.prop.RstContiNonPresentiInStruttura->RecordCount(), 0);
  EXPECT_EQ(prima->RecordCount(), 4);
}

TEST(PopolaSaldi, MissingInputsAndFailuresAreTold) {
  Azienda azienda;
  azienda.prop.TipoMovimenti.clear();
  EXPECT_FALSE(azienda.popola());
  EXPECT_EQ(azienda.esito(), "1 Tipo movimento da elaborare  : Dato non definito nel BO ");
  azienda.prop.TipoMovimenti = "1 = 1";
  azienda.prop.DaData = "ieri";
  EXPECT_FALSE(azienda.popola());
  EXPECT_THAT(azienda.esito(), testing::MatchesRegex("99 .* in BdgElaEco_PopolaRstSaldiDaSituazioneEP"));
  azienda.prop.DaData = Date::FromYmd(2025, 1, 1);
  azienda.situazione.saldi = ogniMese("50010001", "1000000000000");  // twelve of them do not fit 13 digits
  azienda.definisci(5);
  EXPECT_FALSE(azienda.popola());
  EXPECT_THAT(azienda.esito(), testing::StartsWith("99 "));
  // Every statement of a run fails in turn.
  azienda.situazione.saldi = ogniMese("50010001", "1");
  azienda.prop.AData = Date::FromYmd(2025, 1, 31);
  int k = 1;
  for (;; ++k) {
    auto guasta = std::make_shared<testing_support::FaultConnection>(azienda.db);
    guasta->failAt = k;
    azienda.ctx.connessione(guasta);
    if (azienda.popola()) break;
    EXPECT_THAT(azienda.esito(), testing::MatchesRegex("99 injected fault in [A-Za-z0-9_]+ ?")) << k;
  }
  EXPECT_GT(k, 8);
}

TEST(PopolaSaldi, DistinctValuesAreThoseTheFilterShows) {
  testing_support::ContestoDiProva prova;
  const auto rst = rows({"CONTO", "MESE"}, {{"B", 1}, {"A", 1}, {"B", 2}, {"C", 2}});
  rst->Filter("MESE = 1");
  const auto valori = bukorval::BdgElaEco_ValoriDistinti(prova.ctx, *rst, "CONTO");
  ASSERT_EQ(valori->Count(), 2u);
  EXPECT_EQ(values::toPlainText(valori->Keys().at(0)) + values::toPlainText(valori->Keys().at(1)), "BA");
  rst->Filter("MESE = 3");
  EXPECT_EQ(bukorval::BdgElaEco_ValoriDistinti(prova.ctx, *rst, "CONTO")->Count(), 0u);
  rst->Filter("");
  bukorval::BdgElaEco_ValoriDistinti(prova.ctx, *rst, "NIENTE");
  EXPECT_THAT(prova.ctx.errore(), testing::EndsWith(" in BdgElaEco_ValoriDistinti"));
}

}  // namespace
}  // namespace elaeco_tests
