// The whole texts of the economic elaboration's statements.

#include "elaeco/DettagliEsistenti.h"
#include "elaeco/InsiemiSaldi.h"
#include "elaeco/Riclassificazione.h"
#include "support/TestContext.h"

namespace elaeco_tests {
namespace {

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
  const std::string start =
      " SELECT * \r\n FROM   BU65_TESBUDGET WITH (NOLOCK) \r\n INNER  JOIN BU66_DETBUDGET WITH (NOLOCK) \r\n"
      "    ON  BU66_ID_BU65 = BU65_ID \r\n WHERE  BU65_DITTA_CG18 = 7\r\n AND    BU65_INDTIPO_BU01 = 5\r\n"
      " AND    BU65_SOTTOTIPO_BU01 = 'A '\r\n AND    BU65_ANNO = 2025\r\n AND    BU65_PROGESER = 2\r\n"
      " AND    BU66_TIPO = 3\r\n";
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
  Selected scheme(2, 9);
  EXPECT_EQ(
      carry(scheme, {}).first,
      " SELECT CG24_CONTO AS CONTOCOGE, \r\n        CG20_INDSEGNO AS SEGNO, \r\n        CG23_CODICE AS CONTORICL, \r\n"
      "        CG23_DESCR AS DESCRRICL \r\n FROM   CG24_TABPDC WITH (NOLOCK) \r\n"
      " LEFT OUTER JOIN CG20_COLLPDCRICL WITH (NOLOCK) \r\n      ON CG20_GRUPPO_CG10 = CG24_GRUPPO_CG10 \r\n"
      "      AND CG20_CONTO_CG24 = CG24_CONTO \r\n      AND CG20_CODICE_CG21 = 9\r\n"
      " LEFT OUTER JOIN CG23_RICLBILCEE WITH (NOLOCK) \r\n      ON CG23_CODICE_CG21 = CG20_CODICE_CG21 \r\n"
      "      AND CG23_CODICE = CG20_CODICE_CG23 \r\n WHERE CG24_GRUPPO_CG10 = 4\r\n AND   CG24_INDTIPOCONTO = 2 ");
  Selected analytic(3, 8);
  EXPECT_EQ(
      carry(analytic, {}).first,
      " SELECT CG24_CONTO AS CONTOCOGE, \r\n        CG83_INDSEGNO AS SEGNO, \r\n        PC03_CONTO AS CONTORICL, \r\n"
      "        PC03_DESCR AS DESCRRICL \r\n FROM CG24_TABPDC WITH (NOLOCK) \r\n"
      " LEFT OUTER JOIN CG83_COLLRICL WITH (NOLOCK) \r\n      ON CG83_CODICE_CG10 = CG24_GRUPPO_CG10 \r\n"
      "      AND CG83_CONTO_CG24 = CG24_CONTO \r\n      AND CG83_CODICERICL_PC01 = 8\r\n"
      " LEFT OUTER JOIN PC03_ANAGPDC WITH (NOLOCK) \r\n      ON PC03_CODICE_PC01 = CG83_CODICERICL_PC01 \r\n"
      "      AND PC03_CONTO = CG83_CONTORICL_PC03 \r\n WHERE CG24_GRUPPO_CG10 = 4\r\n AND CG24_INDTIPOCONTO = 2 ");
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
}  // namespace elaeco_tests
