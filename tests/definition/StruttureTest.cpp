#include "definition/Strutture.h"
#include "support/TestContext.h"

namespace {

using bukorval::Strutture, testing_support::TestContext;

/// A definition as the three readings behind a field list find it.
void define(TestContext& budget, const Variant& structure, int perSite, int chartKind = 1) {
  budget.define({{"BU01_STRUTTURA", structure}, {"BU01_FLGSEDI", perSite}, {"BU01_INDTIPOPDC", chartKind}});
}

TEST(Strutture, FieldListFollowsTheDefinition) {
  const struct {
    int type;
    Variant structure;
    int perSite, chartKind;
    std::string expected;
  } rows[] = {
      {0, "CLFVAR   ART", 0, 1, "BU65_CLIFOR_CG44,BU65_CODART_MG66,BU65_OPZIONE_MG5E"},
      {1, "AREZONSED", 1, 1, "BU65_CODICE_CG31,BU65_AREA_MG08,BU65_ZONA_MG09"},
      {3, Variant::Null(), 0, 1, "BU65_INDCOSRIC_BU07,BU65_SCHEDA_BU07"},
      {4, "CON", 1, 1,
       "BU65_CODICE_CG31,BU65_INDCOSRIC_BU07,BU65_SCHEDA_BU07,BU65_GRUPPO_CG10,BU65_CONTO_CG24,BU65_FLGBUDGET,"
       "BU65_FLGCFLOW"},
      {5, "", 0, 1, "BU65_GRUPPO_CG10,BU65_CONTO_CG24"},
      {5, "", 0, 2, "BU65_CODICE_CG21,BU65_CODICE_CG23"},
      {5, "PDCVDS", 0, 3, "BU65_CODICE_PC01,BU65_CONTO_PC03,BU65_PDCVDS_PC01,BU65_VDS_PC03"},
  };
  for (const auto& row : rows) {
    TestContext budget;
    define(budget, row.structure, row.perSite, row.chartKind);
    EXPECT_EQ(Strutture(budget.ctx).GetElencoCampi(row.type, "01"), row.expected) << row.type;
    EXPECT_EQ(budget.outcome(), "0 ") << row.type;
  }
}

TEST(Strutture, AnUnknownElementIsReported) {
  TestContext budget;
  define(budget, "ARE###", 0);
  EXPECT_EQ(Strutture(budget.ctx).GetElencoCampi(0, "01"), "");
  EXPECT_EQ(budget.outcome(), "99 Unknown structure element '###' in GetElencoCampi");
  EXPECT_EQ(Strutture(budget.ctx).GetDescrizioneStruttura("ARE   SFA"), "Area, Sottofamiglia");
  EXPECT_EQ(Strutture(budget.ctx).GetDescrizioneStruttura(Variant::Null()), "");
}

TEST(Strutture, FailuresKeepTheInnermostName) {
  TestContext budget;
  budget.failAlways();
  const Strutture structures(budget.ctx);
  EXPECT_EQ(structures.GetElencoCampi(0, "01"), "");
  EXPECT_EQ(budget.outcome(), "99 boom in GetStruttura");
  EXPECT_EQ(structures.GetDescrizioneStrutturaBU60("STD"), "");
  EXPECT_EQ(budget.outcome(), "99 boom in GetDescrizioneStrutturaBU60");
}

TEST(Strutture, StructureOfABudget) {
  TestContext budget;
  budget.answer({"BU60_DESCR", "BU60_INDTIPOPDC", "BU60_CODICEPDC"}, {{"Standard", 3, 7}});
  bukorval::BdgTipoPdc kind = 9;
  Variant code = 9;
  Strutture(budget.ctx).GetStrutturaBU60TipoPdcCodicePdc("L'UNO", kind, code);
  EXPECT_EQ(kind, 3);
  EXPECT_EQ(code, Variant(7));
  EXPECT_NE(budget.db->texts.back().find("BU60_CODICE = 'L''UNO'"), std::string::npos);
  budget.answer({"BU60_DESCR", "BU60_INDTIPOPDC", "BU60_CODICEPDC"}, {});
  Strutture(budget.ctx).GetStrutturaBU60TipoPdcCodicePdc("X", kind, code);
  EXPECT_EQ(kind, 0);
  EXPECT_TRUE(code.isNull());
}

TEST(Strutture, DescriptionTexts) {
  TestContext budget;
  const Strutture structures(budget.ctx);
  const std::string list = "BU65_CODICE_CG31,BU65_SFAM_MG54,BU65_NODO_PD0C, BU65_FLGBUDGET";
  EXPECT_EQ(structures.GetStringaCodiciDescrizioni(list, "  "),
            "  , LEFT(CONVERT(NVARCHAR(2), BU65_CODICE_CG31) + ' - ' + CG31_DESCR, 40) AS BU65_CODICE_CG31_DESCR\r\n"
            "  , LEFT(BU65_NODO_PD0C + ' - ' + NODO.PD0C_DESCR, 40) AS BU65_NODO_PD0C_DESCR");
  EXPECT_EQ(structures.GetStringaJoinCodiciDescrizioni(list),
            "LEFT OUTER JOIN CG31_SEDI WITH (NOLOCK) ON CG31_CODICE = BU65_CODICE_CG31"
            " AND CG31_DITTA_CG18 = BU65_DITTA_CG18\r\n"
            "LEFT OUTER JOIN PD0C_NODI AS NODO WITH (NOLOCK) ON NODO.PD0C_NODO = BU65_NODO_PD0C"
            " AND NODO.PD0C_DITTA_CG18 = BU65_DITTA_CG18");
  EXPECT_EQ(structures.GetStringaCodiciDescrizioni("BU65_FLGBUDGET"), "");
  EXPECT_EQ(structures.GetStringaJoinCodiciDescrizioni(""), "");
}

TEST(Strutture, TypesAndQuotes) {
  const struct {
    const char* column;
    int type;
    Variant quote;
  } rows[] = {
      {"BU65_CODICE_CG31", 14, ""},  {"bu65_contoPDC_pc03", 202, "'"}, {"BU65_SOTTOTIPO_BU01", 129, "'"},
      {"BU65_DATAULTAGG", 135, "'"}, {"BU65_INDTIPO_BU01", 2, ""},
  };
  TestContext budget;
  const Strutture structures(budget.ctx);
  for (const auto& row : rows) {
    EXPECT_EQ(structures.GetTipoCampo(row.column), row.type) << row.column;
    EXPECT_EQ(structures.GetApiceCampiBU65(row.column), row.quote) << row.column;
  }
  structures.GetTipoCampo("BU65_PIPPO");
  EXPECT_EQ(budget.outcome(), "99 BU65_TESBUDGET has no column 'BU65_PIPPO' in GetTipoCampo");
  EXPECT_TRUE(budget.db->texts.empty());
}

}  // namespace
