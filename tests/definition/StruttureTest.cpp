#include <gtest/gtest.h>

#include "definition/Banco.h"
#include "definition/Strutture.h"

namespace {

using bukorval::Strutture;
using values::Variant;

/// A definition as the three readings behind a field list find it.
void definisci(definition_tests::Banco& banco, const Variant& struttura, int perSede, int tipoPdc = 1) {
  banco.rispondi({"BU01_STRUTTURA"}, {{struttura}});
  banco.rispondi({"BU01_FLGSEDI"}, {{perSede}});
  banco.rispondi({"BU01_INDTIPOPDC"}, {{tipoPdc}});
}

TEST(Strutture, FieldListFollowsTheDefinition) {
  struct Riga {
    int tipo;
    Variant struttura;
    int perSede, tipoPdc;
    std::string attesa;
  };
  const Riga righe[] = {
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
  for (const auto& riga : righe) {
    definition_tests::Banco banco;
    definisci(banco, riga.struttura, riga.perSede, riga.tipoPdc);
    EXPECT_EQ(Strutture(banco.ctx).GetElencoCampi(riga.tipo, "01"), riga.attesa) << riga.tipo;
    EXPECT_EQ(banco.esito(), "0 ") << riga.tipo;
  }
}

TEST(Strutture, AnUnknownElementIsReported) {
  definition_tests::Banco banco;
  definisci(banco, "ARE###", 0);
  EXPECT_EQ(Strutture(banco.ctx).GetElencoCampi(0, "01"), "");
  EXPECT_EQ(banco.esito(), "99 Unknown structure element '###' in GetElencoCampi");
  EXPECT_EQ(Strutture(banco.ctx).GetDescrizioneStruttura("ARE   SFA"), "Area, Sottofamiglia");
  EXPECT_EQ(Strutture(banco.ctx).GetDescrizioneStruttura(Variant::Null()), "");
}

TEST(Strutture, FailuresKeepTheInnermostName) {
  definition_tests::Banco banco;
  banco.guasta();
  const Strutture strutture(banco.ctx);
  EXPECT_EQ(strutture.GetElencoCampi(0, "01"), "");
  EXPECT_EQ(banco.esito(), "99 boom in GetStruttura");
  EXPECT_EQ(strutture.GetDescrizioneStrutturaBU60("STD"), "");
  EXPECT_EQ(banco.esito(), "99 boom in GetDescrizioneStrutturaBU60");
}

TEST(Strutture, StructureOfABudget) {
  definition_tests::Banco banco;
  banco.rispondi({"BU60_DESCR", "BU60_INDTIPOPDC", "BU60_CODICEPDC"}, {{"Standard", 3, 7}});
  bukorval::BdgTipoPdc tipo = 9;
  Variant codice = 9;
  Strutture(banco.ctx).GetStrutturaBU60TipoPdcCodicePdc("L'UNO", tipo, codice);
  EXPECT_EQ(tipo, 3);
  EXPECT_EQ(codice, Variant(7));
  EXPECT_NE(banco.db->texts.back().find("BU60_CODICE = 'L''UNO'"), std::string::npos);
  banco.rispondi({"BU60_DESCR", "BU60_INDTIPOPDC", "BU60_CODICEPDC"}, {});
  Strutture(banco.ctx).GetStrutturaBU60TipoPdcCodicePdc("X", tipo, codice);
  EXPECT_EQ(tipo, 0);
  EXPECT_TRUE(codice.isNull());
}

TEST(Strutture, DescriptionTexts) {
  definition_tests::Banco banco;
  const Strutture strutture(banco.ctx);
  const std::string elenco = "BU65_CODICE_CG31,BU65_SFAM_MG54,BU65_NODO_PD0C, BU65_FLGBUDGET";
  EXPECT_EQ(strutture.GetStringaCodiciDescrizioni(elenco, "  "),
            "  , LEFT(CONVERT(NVARCHAR(2), BU65_CODICE_CG31) + ' - ' + CG31_DESCR, 40) AS BU65_CODICE_CG31_DESCR\r\n"
            "  , LEFT(BU65_NODO_PD0C + ' - ' + NODO.PD0C_DESCR, 40) AS BU65_NODO_PD0C_DESCR");
  EXPECT_EQ(strutture.GetStringaJoinCodiciDescrizioni(elenco),
            "LEFT OUTER JOIN CG31_SEDI WITH (NOLOCK) ON CG31_CODICE = BU65_CODICE_CG31"
            " AND CG31_DITTA_CG18 = BU65_DITTA_CG18\r\n"
            "LEFT OUTER JOIN PD0C_NODI AS NODO WITH (NOLOCK) ON NODO.PD0C_NODO = BU65_NODO_PD0C"
            " AND NODO.PD0C_DITTA_CG18 = BU65_DITTA_CG18");
  EXPECT_EQ(strutture.GetStringaCodiciDescrizioni("BU65_FLGBUDGET"), "");
  EXPECT_EQ(strutture.GetStringaJoinCodiciDescrizioni(""), "");
}

TEST(Strutture, TypesAndQuotes) {
  struct Riga {
    const char* campo;
    int tipo;
    Variant apice;
  };
  definition_tests::Banco banco;
  const Strutture strutture(banco.ctx);
  for (const auto& [campo, tipo, apice] :
       {Riga{"BU65_CODICE_CG31", 14, ""}, Riga{"bu65_contoPDC_pc03", 202, "'"}, Riga{"BU65_SOTTOTIPO_BU01", 129, "'"},
        Riga{"BU65_DATAULTAGG", 135, "'"}, Riga{"BU65_INDTIPO_BU01", 2, ""}}) {
    EXPECT_EQ(strutture.GetTipoCampo(campo), tipo) << campo;
    EXPECT_EQ(strutture.GetApiceCampiBU65(campo), apice) << campo;
  }
  strutture.GetTipoCampo("BU65_PIPPO");
  EXPECT_EQ(banco.esito(), "99 BU65_TESBUDGET has no column 'BU65_PIPPO' in GetTipoCampo");
  EXPECT_TRUE(banco.db->texts.empty());
}

}  // namespace
