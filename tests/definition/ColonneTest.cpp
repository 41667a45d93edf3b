#include <gtest/gtest.h>

#include <set>

#include "definition/Colonne.h"
#include "definition/Ddl.h"
#include "values/Errore.h"

namespace {

using definition_tests::leggiDdl;

std::string tipoDdl(const bukorval::Colonna& colonna) {
  const auto lunghezza = std::to_string(colonna.lunghezza);
  switch (colonna.tipo) {
    case ado::adChar: return "CHAR(" + lunghezza + ")";
    case ado::adVarWChar: return "NVARCHAR(" + lunghezza + ")";
    case ado::adDecimal: return "DECIMAL(" + lunghezza + ",0)";
    case ado::adSmallInt: return "SMALLINT";
    case ado::adDBTimeStamp: return "DATETIME";
    default: return "?";
  }
}

TEST(Colonne, AgreeWithTheTable) {
  const auto ddl = leggiDdl();
  const auto& tabella = ddl.at("BU65_TESBUDGET");
  EXPECT_EQ(tabella.size(), bukorval::colonneBU65().size());
  for (const auto& colonna : bukorval::colonneBU65()) {
    const auto trovata = tabella.find(std::string(colonna.nome));
    ASSERT_NE(trovata, tabella.end()) << colonna.nome;
    EXPECT_EQ(trovata->second, tipoDdl(colonna)) << colonna.nome;
  }
}

TEST(Colonne, AreDescribedByTablesWithKeysOfTheirType) {
  const auto ddl = leggiDdl();
  const auto colonnaDi = [&](std::string_view tabella, std::string_view campo) {
    const auto& campi = ddl.at(std::string(tabella));
    const auto trovata = campi.find(std::string(campo));
    return trovata == campi.end() ? "no " + std::string(campo) : trovata->second;
  };
  for (const auto& colonna : bukorval::colonneBU65()) {
    if (!colonna.haDescrizione()) continue;
    const auto& descrizione = colonna.descrizione;
    ASSERT_TRUE(ddl.contains(std::string(descrizione.tabella))) << descrizione.tabella;
    EXPECT_TRUE(colonnaDi(descrizione.tabella, descrizione.campo).starts_with("NVARCHAR")) << colonna.nome;
    EXPECT_EQ(colonnaDi(descrizione.tabella, descrizione.codice), tipoDdl(colonna)) << colonna.nome;
    for (const auto& [campo, valore] : descrizione.altre)
      if (valore.starts_with("BU65_")) {
        EXPECT_EQ(colonnaDi(descrizione.tabella, campo), tipoDdl(bukorval::colonnaBU65(valore))) << colonna.nome;
      }
  }
}

TEST(Colonne, EveryAnalysisColumnBelongsToAnElement) {
  std::set<std::string_view> codici, colonne;
  for (const auto& elemento : bukorval::elementiStruttura()) {
    EXPECT_EQ(elemento.codice.size(), 3u) << elemento.codice;
    EXPECT_TRUE(codici.insert(elemento.codice).second) << elemento.codice;
    for (const auto colonna : elemento.colonne)
      if (!colonna.empty()) colonne.insert(bukorval::colonnaBU65(colonna).nome);
  }
  for (const auto& colonna : bukorval::colonneBU65())
    EXPECT_TRUE(colonne.contains(colonna.nome) || !colonna.haDescrizione()) << colonna.nome;
}

TEST(Colonne, TheGridsAnalysisColumnsAreKnown) {
  for (const char* nome :
       {"BU65_INDCOSRIC_BU07", "BU65_SCHEDA_BU07",   "BU65_FLGBUDGET",           "BU65_FLGCFLOW",
        "BU65_CODICE_CG31",    "BU65_CLIFOR_CG44",   "BU65_MACROAREA_MG07",      "BU65_AREA_MG08",
        "BU65_ZONA_MG09",      "BU65_MACROCAT_MG10", "BU65_CATEG_MG11",          "BU65_SOTTCAT_MG12",
        "BU65_RAGGRCF1_MG31",  "BU65_RAGGRCF2_MG32", "BU65_RAGGRCF3_MG33",       "BU65_IDAGENTE_MG17",
        "BU65_CODART_MG66",    "BU65_OPZIONE_MG5E",  "BU65_LINGUA_MG52",         "BU65_FAM_MG53",
        "BU65_SFAM_MG54",      "BU65_GRUPPO_MG55",   "BU65_SGRUPPO_MG56",        "BU65_GRUSTAT1_MG74",
        "BU65_GRUSTAT2_MG75",  "BU65_GRUSTAT3_MG76", "BU65_GRUSTAT4_MG77",       "BU65_APPLIC_MG57",
        "BU65_DEP_MG58",       "BU65_GRUPFIS_MG61",  "BU65_MARCA_MG64",          "BU65_PROGETTO_PD68",
        "BU65_SPROGETTO_PD69", "BU65_NODO_PD0C",     "BU65_NODORIF_PD0C",        "BU65_COMMESSA_PD25",
        "BU65_SCOMMESSA_PD25", "BU65_CONTO_CG24",    "BU65_CODICE_CG23",         "BU65_CONTO_PC03",
        "BU65_VDS_PC03",       "BU65_CONTOPDC_PC03", "BU65_CONTOCONTROPART_PC03"})
    EXPECT_NO_THROW(bukorval::colonnaBU65(nome)) << nome;
  EXPECT_EQ(bukorval::colonnaBU65(" bu65_area_mg08 ").nome, "BU65_AREA_MG08");
  EXPECT_THROW(bukorval::colonnaBU65("BU65_AREA"), values::Errore);
}

}  // namespace
