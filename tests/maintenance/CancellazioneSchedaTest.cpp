#include <gmock/gmock.h>

#include "maintenance/Banco.h"
#include "maintenance/CancellazioneScheda.h"

namespace {

using bukorval::CancellazioneScheda;
using maintenance_tests::Banco;
using testing::ElementsAreArray;
using testing::IsEmpty;
using values::Variant;

const std::string kCashFlow = " DELETE FROM BU67_BDGCASHFLOW WHERE BU67_ID_BU65 = 12";
const std::string kScadenze = " DELETE FROM BU14_SCADCFLOW   WHERE BU14_IDBUDGET = 12";
const std::string kPercentuali = " DELETE FROM BU90_TABPERCBUD  WHERE BU90_IDBUDGET = 12";
const std::string kMastri = " DELETE FROM BU63_DETMASTRI \r\n WHERE BU63_ID_BU65 = 12";
const std::string kDettagli = " DELETE FROM BU66_DETBUDGET \r\n WHERE BU66_ID_BU65 = 12\r\n";
const std::string kRimasti =
    " SELECT TOP 1 BU65_ID \r\n FROM BU65_TESBUDGET WITH (NOLOCK) \r\n"
    " INNER JOIN BU66_DETBUDGET WITH (NOLOCK) ON BU66_ID_BU65 = BU65_ID \r\n WHERE BU65_ID = 12\r\n";
const std::string kTestata = "DELETE FROM BU65_TESBUDGET WHERE BU65_ID = 12";

/// The statements that a type deletes a card with, in order.
std::vector<std::string> statements(bukorval::BdgTipo tipo) {
  std::vector<std::string> testi;
  if (tipo == 4) testi = {kCashFlow, kScadenze, kPercentuali};
  if (tipo == 5) testi = {kMastri};
  testi.insert(testi.end(), {kDettagli, kRimasti, kTestata});
  return testi;
}

void rispondi(Banco& banco, std::size_t istruzioni, std::vector<std::vector<Variant>> rimasti) {
  for (std::size_t i = 2; i < istruzioni; ++i) banco.rispondiNulla();
  banco.rispondi({"BU65_ID"}, rimasti);
}

TEST(CancellaRiga, DeletesDependantsFirstAndOnlyThoseOfTheType) {
  for (const int tipo : {0, 1, 4, 5}) {
    Banco banco(tipo);
    const auto attese = statements(tipo);
    rispondi(banco, attese.size(), {});
    Variant id = 12;
    CancellazioneScheda(banco.ctx).CancellaRigaBU65(id);
    EXPECT_THAT(banco.db->texts, ElementsAreArray(attese));
    EXPECT_EQ(banco.esito(), "0 ");
  }
}

TEST(CancellaRiga, KeepsTheHeaderWhileDetailsAreLeft) {
  Banco banco(1);
  rispondi(banco, 3, {{12}});
  Variant id = 12;
  CancellazioneScheda(banco.ctx).CancellaRigaBU65(id);
  EXPECT_THAT(banco.db->texts, ElementsAreArray({kDettagli, kRimasti}));
}

TEST(CancellaRiga, DeletesNothingWithoutACard) {
  for (Variant id : {Variant::Null(), Variant{}, Variant("  "), Variant(0), Variant("0"), Variant(0.0)}) {
    Banco banco(4);
    CancellazioneScheda(banco.ctx).CancellaRigaBU65(id);
    EXPECT_THAT(banco.db->texts, IsEmpty());
    EXPECT_EQ(banco.ctx.stato(), 0);
  }
  for (Variant id : {Variant("12 OR 1=1"), Variant("dodici"), Variant(12.5)}) {
    Banco banco(4);
    CancellazioneScheda(banco.ctx).CancellaRigaBU65(id);
    EXPECT_THAT(banco.db->texts, IsEmpty());
    EXPECT_EQ(banco.ctx.stato(), 99);
    EXPECT_THAT(banco.ctx.errore(), testing::EndsWith(" in CancellaRigaBU65 "));
  }
}

TEST(CancellaRiga, StopsAtTheStatementThatFails) {
  for (const int tipo : {1, 4, 5}) {
    const auto attese = statements(tipo);
    for (std::size_t guasto = 1; guasto <= attese.size(); ++guasto) {
      Banco banco(tipo);
      rispondi(banco, attese.size(), {});
      banco.guastaAl(guasto);
      Variant id = 12;
      CancellazioneScheda(banco.ctx).CancellaRigaBU65(id);
      EXPECT_THAT(banco.db->texts,
                  ElementsAreArray(attese.begin(), attese.begin() + static_cast<std::ptrdiff_t>(guasto)));
      EXPECT_EQ(banco.esito(),
                tipo == 5 && guasto == 1 ? "99 boom in DeleteBU63_DettaglioMastri" : "99 boom in CancellaRigaBU65 ");
    }
  }
}

TEST(EliminaBudgetConSolaTestata, DeletesTheHeadersOfOneCompanyAndBudget) {
  Banco banco;
  CancellazioneScheda(banco.ctx).EliminaBudgetConSolaTestata(7, 3, "B2");
  EXPECT_THAT(banco.db->texts,
              ElementsAreArray({" DELETE FROM BU65_TESBUDGET \r\n WHERE BU65_INDTIPO_BU01 = 3\r\n"
                                "   AND BU65_SOTTOTIPO_BU01 = 'B2'\r\n   AND BU65_DITTA_CG18 = 7\r\n"}));
  banco.guastaAl(2);
  CancellazioneScheda(banco.ctx).EliminaBudgetConSolaTestata(7, 3, "B2");
  EXPECT_EQ(banco.esito(), "99 boom in EliminaBudgetConSolaTestata");
  CancellazioneScheda(banco.ctx).EliminaBudgetConSolaTestata("7 OR 1=1", 3, "B2");
  EXPECT_EQ(banco.ctx.stato(), 99);
  EXPECT_EQ(banco.db->texts.size(), 2u);
}

}  // namespace
