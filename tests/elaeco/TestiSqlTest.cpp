// The whole texts of the economic elaboration's statements.

#include "elaeco/DettagliEsistenti.h"
#include "elaeco/InsiemiSaldi.h"
#include "elaeco/Riclassificazione.h"
#include "support/Expected.h"
#include "support/TestContext.h"

namespace {

using testing_support::expected;

struct Selected : testing_support::TestContext {
  Selected(bukorval::BdgTipoPdc chartKind, int chart) : TestContext(5) {
    prop.CodiceDitta = 7;
    prop.CodicePdcCoGeDitta = 4;
    prop.SottoTipoBudget = "A";
    prop.AnnoEsercizio = 2025;
    prop.ProgressivoEsercizio = 2;
    prop.TipoDettaglioDestinazione = 3;
    ctx.dati.tipoPdc = chartKind;
    ctx.dati.codicePdc = chart;
  }
};

TEST(TestiElaEco, ExistingDetailsOfEveryChartKind) {
  const auto start = expected("elaeco/expected/dettagli_esistenti.sql");
  const struct {
    bukorval::BdgTipoPdc chartKind;
    int chart;
    const char *site, *from, *to;
    std::string end;
  } cases[] = {
      {1, 4, "", "5001", "5002",
       " AND    BU65_GRUPPO_CG10 = 4\r\n AND    BU65_CONTO_CG24 >= '5001'\r\n AND    BU65_CONTO_CG24 <= '5002'\r\n"},
      {2, 9, "3", "A", "",
       " AND    BU65_CODICE_CG31 = 3\r\n AND    BU65_CODICE_CG21 = 9\r\n AND    BU65_CODICE_CG23 >= 'A'\r\n"},
      {3, 8, "", "", "Z", " AND    BU65_CODICE_PC01 = 8\r\n AND    BU65_CONTO_PC03 <= 'Z'\r\n"},
  };
  for (const auto& c : cases) {
    Selected budget(c.chartKind, c.chart);
    budget.prop.CodiceSede = c.site;
    budget.prop.DaConto = c.from;
    budget.prop.AConto = c.to;
    EXPECT_EQ(bukorval::testoDettagliEsistenti(budget.ctx), start + c.end);
  }
}

/// One balance carried over with the given links: the text sent, and the rows that result.
std::pair<std::string, ado::RecordsetPtr> carry(Selected& budget, const std::vector<std::vector<Variant>>& links) {
  budget.answer({"CONTOCOGE", "SEGNO", "CONTORICL", "DESCRRICL"}, links);
  const auto balances = bukorval::creaSaldiMensili();
  bukorval::SommaSaldi(*balances).aggiungi("O'1", "Conto", 2025, 2, -5);
  const auto carried = bukorval::riportaSuContiRiclassificati(budget.ctx, *balances);
  return {budget.db->texts.at(0), carried};
}

TEST(TestiElaEco, ReclassificationLinksOfBothKinds) {
  Selected scheme(2, 9), analytic(3, 8);
  EXPECT_EQ(carry(scheme, {}).first, expected("elaeco/expected/legami_schema.sql"));
  EXPECT_EQ(carry(analytic, {}).first, expected("elaeco/expected/legami_analitici.sql"));
}

TEST(TestiElaEco, LinksThatLeadNowhereDropTheBalance) {
  const std::pair<std::vector<Variant>, int> cases[] = {{{"O'1", 2, "Z'9", "Fuori"}, 1},
                                                        {{"O'1", 1, "Z", "Segno"}, 0},
                                                        {{"O'1", 2, Variant::Null(), Variant::Null()}, 0},
                                                        {{"O'1", 2, "", ""}, 0},
                                                        {{"ALTRO", 2, "Z", "Conto"}, 0}};
  for (const auto& [link, expected] : cases) {
    Selected budget(2, 9);
    const auto carried = carry(budget, {link}).second;
    ASSERT_EQ(carried->RecordCount(), expected);
    if (expected == 0) continue;
    EXPECT_EQ(values::toPlainText((*carried)["CONTO"].Value()), "Z'9");
  }
}

}  // namespace
