// The proposed rows, edited by a client, written into cards.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <utility>

#include "elaeco/Azienda.h"

namespace elaeco_tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A half-yearly budget with 10 a month proposed for goods and 1 for services.
struct Proposta : Azienda {
  Proposta() {
    definisci(4);
    situazione.saldi = [](const std::string&) { return std::vector{dare("50010001", "10"), dare("50010002", "1")}; };
  }
  /// Edits the rows that a filter shows, and leaves the filter on the set.
  void modifica(const std::string& filtro, const char* campo, const Variant& valore) {
    auto& righe = *prop.RstSaldiElaEco;
    righe.Filter(filtro);
    for (; !righe.Eof(); righe.MoveNext()) {
      righe[campo].Value(valore);
      righe.Update();
    }
  }
  void popolaEScrivi() {
    ASSERT_TRUE(popola()) << esito();
    scrivi();
  }
  std::vector<std::string> mancanti() const {
    std::vector<std::string> conti;
    const auto rst = prop.RstContiNonPresentiInStruttura->Clone();
    for (; !rst->Eof(); rst->MoveNext())
      conti.push_back(values::toPlainText((*rst)["CONTO"].Value()) + " " +
                      values::toPlainText((*rst)["DESCRIZIONE"].Value()));
    return conti;
  }
};

TEST(ScriviBudget, MissingCardsAreMadeWithAllTheirDetails) {
  Proposta prova;
  prova.popolaEScrivi();
  EXPECT_EQ(prova.esito(), "0 ");
  EXPECT_THAT(prova.scritti(),
              ElementsAre("50010001 0 1 60.00", "50010001 0 2 60.00", "50010002 0 1 6.00", "50010002 0 2 6.00"));
  // Budget and actuals for two periods, the account with its chart.
  EXPECT_THAT(
      prova.righe(
          "SELECT BU65_GRUPPO_CG10, COUNT(*) FROM BU65_TESBUDGET INNER JOIN BU66_DETBUDGET ON BU66_ID_BU65 = BU65_ID"
          " GROUP BY BU65_ID, BU65_GRUPPO_CG10"),
      ElementsAre("1 4", "1 4"));
  EXPECT_THAT(prova.mancanti(), IsEmpty());
}

TEST(ScriviBudget, RowsAreWrittenAsTheClientLeavesThem) {
  Proposta prova;
  prova.scheda("50010001", 0, 1, "5");
  prova.scheda("50010001", 0, 2, "7");  // a second card of the account: the older one is the account's
  ASSERT_TRUE(prova.popola());
  EXPECT_THAT(prova.proposte(), ElementsAre("50010001 1 60.00 1 0", "50010001 2 60.00 1 0", "50010002 1 6.00 0 1",
                                            "50010002 2 6.00 0 1"));
  prova.modifica("CONTO = '50010002' AND PERIODO = 1", "IMPORTO", "1234,567");
  prova.modifica("CONTO = '50010002' AND PERIODO = 2", "IMPORTO", Variant::Null());
  prova.avvenuti.clear();
  prova.scrivi();
  EXPECT_EQ(prova.esito(), "0 ");
  EXPECT_THAT(prova.scritti(), ElementsAre("50010001 0 1 5.00", "50010001 0 2 7.00", "50010002 0 1 1234.57"));
  EXPECT_EQ(prova.prop.RstSaldiElaEco->RecordCount(), 1) << "the client's filter is left as it was";
  EXPECT_THAT(prova.avvenuti, ElementsAre("Scrittura del budget dai saldi 4", "1", "2", "3", "4", "end"));

  prova.modifica("BUDGETPRESENTE = 1", "SOVRASCRIVI", 1);
  prova.modifica("PERIODO = 2", "SOVRASCRIVI", 0);
  prova.scrivi();
  EXPECT_THAT(prova.scritti(), ElementsAre("50010001 0 1 60.00", "50010001 0 2 7.00", "50010002 0 1 1234.57"));
}

TEST(ScriviBudget, WritingTwiceChangesNothing) {
  const std::pair<const char*, const char*> budget[] = {
      {"01", "BU65_CONTO_CG24"}, {"02", "BU65_CODICE_CG23"}, {"03", "BU65_CONTO_PC03"}};
  for (const auto& [sottoTipo, colonna] : budget) {
    Proposta prova;
    prova.prop.SottoTipoBudget = sottoTipo;
    prova.prop.TipoDettaglioDestinazione = 1;
    prova.popolaEScrivi();
    const auto prima = prova.scritti(colonna);
    EXPECT_GT(prima.size(), 0u) << sottoTipo;
    prova.scrivi();
    EXPECT_EQ(prova.scritti(colonna), prima) << sottoTipo;
    const auto schede = prova.righe("SELECT COUNT(*) FROM BU65_TESBUDGET");
    // Proposed again, every row is present and kept.
    prova.popolaEScrivi();
    for (const auto& riga : prova.proposte()) EXPECT_TRUE(riga.ends_with(" 1 0")) << riga;
    EXPECT_EQ(prova.scritti(colonna), prima);
    EXPECT_EQ(prova.righe("SELECT COUNT(*) FROM BU65_TESBUDGET"), schede);
  }
}

TEST(ScriviBudget, TheSiteIsPartOfTheSelection) {
  for (const bool perSede : {true, false}) {
    Proposta prova;
    prova.scheda("50010001", 0, 1, "1", "1");
    if (perSede) prova.db->Execute("UPDATE BU01_ANABUDGET SET BU01_FLGSEDI = 1");
    prova.prop.CodiceSede = 2;
    for (int volte = 0; volte < 2; ++volte) {
      prova.popolaEScrivi();
      EXPECT_EQ(prova.esito(), "0 ");
      EXPECT_THAT(
          prova.righe("SELECT BU65_CODICE_CG31, BU65_CONTO_CG24, COUNT(BU66_IMPORTO) FROM BU65_TESBUDGET INNER JOIN"
                      " BU66_DETBUDGET ON BU66_ID_BU65 = BU65_ID GROUP BY BU65_ID, BU65_CODICE_CG31, BU65_CONTO_CG24"
                      " ORDER BY BU65_ID"),
          ElementsAre("1 50010001 1", "2 50010001 2", "2 50010002 2"));
    }
    prova.prop.CodiceSede = {};
    ASSERT_TRUE(prova.popola());
    prova.modifica("", "IMPORTO", 77);
    prova.scrivi();
    EXPECT_EQ(prova.esito(), perSede ? "1 CodiceSede  : Dato non definito nel BO " : "0 ");
  }
}

TEST(ScriviBudget, AccountsWithoutACardThatTheStructureDoesNotAllowAreListed) {
  struct Caso {
    const char* nome;
    std::function<void(Proposta&)> prepara;
    std::vector<std::string> mancanti;
    std::size_t scritti;
  };
  const auto struttura = [](Proposta& prova) {
    prova.db->Execute(
        "INSERT INTO BU61_STRUTTELEM (BU61_CODICE_BU60, BU61_ELEMENTO, BU61_CAMPO, BU61_VALORE) VALUES"
        " ('S1', 1, 'BU65_CONTO_CG24', '50010001'), ('S1', 2, 'BU65_CODICE_CG23', '50010002')");
  };
  const std::vector<std::string> entrambi = {"50010001 Merci", "50010002 Servizi"};
  const Caso casi[] = {
      {"the definition's structure lists one",
       [&](Proposta& prova) {
         struttura(prova);
         prova.db->Execute("UPDATE BU01_ANABUDGET SET BU01_CODICE_BU60 = 'S1'");
       },
       {"50010002 Servizi"},
       2},
      {"the selected structure lists one",
       [&](Proposta& prova) {
         struttura(prova);
         prova.prop.CodiceStrutturaBU60 = "S1  ";
       },
       {"50010002 Servizi"},
       2},
      {"a structure without elements", [](Proposta& prova) { prova.prop.CodiceStrutturaBU60 = "S2"; }, entrambi, 0},
      {"cards are not made by account",
       [](Proposta& prova) {
         prova.db->Execute(
             "UPDATE BU01_ANABUDGET SET BU01_INDTIPO = 3, BU01_STRUTTURA = 'MAR' WHERE BU01_SOTTOTIPO = '01'");
         prova.prop.TipoBudget = 3;
       },
       entrambi, 0},
      {"a card is there already",
       [](Proposta& prova) {
         prova.prop.CodiceStrutturaBU60 = "S2";
         prova.scheda("50010002", 1, 1, "1");
       },
       {"50010001 Merci"},
       3},
      {"only accounts with a card",
       [](Proposta& prova) {
         prova.prop.ElaboraSoloContiBudgettizzati = true;
         prova.scheda("50010002", 1, 1, "1");
       },
       {},
       3},
  };
  for (const auto& caso : casi) {
    Proposta prova;
    caso.prepara(prova);
    prova.popolaEScrivi();
    EXPECT_EQ(prova.esito(), "0 ") << caso.nome;
    EXPECT_EQ(prova.mancanti(), caso.mancanti) << caso.nome;
    EXPECT_EQ(prova.scritti().size(), caso.scritti) << caso.nome;
  }
}

TEST(ScriviBudget, WhatCannotBeWrittenLeavesNothing) {
  struct Caso {
    const char* nome;
    std::function<void(Proposta&)> guasta;
    const char* esito;
  };
  const Caso casi[] = {
      {"period above the last", [](Proposta& p) { p.modifica("CONTO = '50010002'", "PERIODO", 3); },
       "99 Period 3 is outside the budget's 1 to 2 in BdgElaEco_ScriviBudget_DaRstSaldiElaEco"},
      {"period 0", [](Proposta& p) { p.modifica("CONTO = '50010002'", "PERIODO", 0); },
       "99 Period 0 is outside the budget's 1 to 2 in BdgElaEco_ScriviBudget_DaRstSaldiElaEco"},
      {"kind above the last forecast", [](Proposta& p) { p.prop.TipoDettaglioDestinazione = 3; },
       "99 Detail kind 3 is outside the budget's 0 to 2 in BdgElaEco_ScriviBudget_DaRstSaldiElaEco"},
      {"negative kind", [](Proposta& p) { p.prop.TipoDettaglioDestinazione = -1; }, "99 Detail kind -1 is outside"},
      {"no set", [](Proposta& p) { p.prop.RstSaldiElaEco = nullptr; }, "1 RstSaldiElaEco  : Dato non definito nel BO "},
      {"a set of another kind", [](Proposta& p) { p.prop.RstSaldiElaEco = testing_support::rows({"CODICE"}, {{"x"}}); },
       "99 Item cannot be found in the collection: CONTO in BdgElaEco_ScriviBudget_DaRstSaldiElaEco"},
      {"a closed set", [](Proposta& p) { p.prop.RstSaldiElaEco->Close(); }, "99 "},
      {"an amount that is none",
       [](Proposta& p) {
         p.prop.RstSaldiElaEco = testing_support::rows({"CONTO", "DESCRIZIONE", "PERIODO", "IMPORTO", "SOVRASCRIVI"},
                                                       {{"50010001", "", 1, 1, 1}, {"50010001", "", 2, "molto", 1}});
       },
       "99 "},
  };
  for (const auto& caso : casi) {
    Proposta prova;
    ASSERT_TRUE(prova.popola());
    caso.guasta(prova);
    prova.scrivi();
    EXPECT_THAT(prova.esito(), testing::StartsWith(caso.esito)) << caso.nome;
    EXPECT_THAT(prova.righe("SELECT BU65_ID FROM BU65_TESBUDGET"), IsEmpty()) << caso.nome;
  }
}

TEST(ScriviBudget, AnAccountWithAQuoteFindsItsCard) {
  Proposta prova;
  prova.situazione.saldi = [](const std::string&) { return std::vector{dare("O'1", "2")}; };
  prova.popolaEScrivi();
  prova.popolaEScrivi();
  EXPECT_EQ(prova.esito(), "0 ");
  EXPECT_THAT(prova.proposte(), ElementsAre("O'1 1 12.00 1 0", "O'1 2 12.00 1 0"));
  EXPECT_THAT(prova.scritti(), ElementsAre("O'1 0 1 12.00", "O'1 0 2 12.00"));
}

}  // namespace
}  // namespace elaeco_tests
