#include <gtest/gtest.h>

#include "elaschede/LivelliSchede.h"
#include "support/ContestoDiProva.h"

namespace bukorval {
namespace {

using testing_support::ContestoDiProva;
using testing_support::rows;
using values::Variant;

TEST(LivelliSchede, ReadsTheCompanysNumberOfLevels) {
  struct Caso {
    std::vector<std::vector<Variant>> righe;
    bool atteso;
    Variant livelli;
  };
  for (const auto& caso : {Caso{{{4}}, true, 4}, Caso{{{Variant::Null()}}, true, 3}, Caso{{}, false, 3}}) {
    ContestoDiProva prova;
    prova.db->answers.push_back(rows({"BU05_NUMLIVELLI"}, caso.righe));
    Variant livelli = 3;
    EXPECT_EQ(GetIsBdgSchedePersonalizzazioneLivelliEsiste(prova.ctx, 7, 1, livelli), caso.atteso);
    EXPECT_EQ(livelli, caso.livelli);
    EXPECT_EQ(prova.db->texts.at(0),
              " SELECT  BU05_NUMLIVELLI \r\n FROM    BU05_PERSCHCOSGEN WITH(NOLOCK) \r\n"
              " WHERE   BU05_DITTA_CG18 = 7\r\n AND     BU05_INDCOSRIC = 1\r\n");
  }
  ContestoDiProva prova;
  Variant livelli = 3;
  EXPECT_FALSE(GetIsBdgSchedePersonalizzazioneLivelliEsiste(prova.ctx, Variant::Null(), 1, livelli));
  EXPECT_FALSE(GetIsBdgSchedePersonalizzazioneLivelliEsiste(prova.ctx, 7, " ", livelli));
  EXPECT_TRUE(prova.db->texts.empty());
}

TEST(LivelliSchede, ComparesTheConfiguredLevels) {
  const std::pair<Variant, bool> casi[] = {{2, true}, {"2", true}, {3, false}, {Variant::Null(), false}};
  for (const auto& [livelli, atteso] : casi) {
    ContestoDiProva prova;
    prova.db->answers.push_back(rows({"BU06_LIVELLO"}, {{1}, {2}}));
    EXPECT_EQ(GetIsBdgSchedeConfigurazioneLivelliEsiste(prova.ctx, 7, 1, livelli), atteso);
    EXPECT_EQ(prova.db->texts.at(0),
              " SELECT  BU06_LIVELLO  FROM    BU06_CONFIGLIVCOSGEN WITH(NOLOCK)  WHERE   BU06_DITTA_CG18 = 7"
              " AND     BU06_INDCOSRIC = 1");
    EXPECT_EQ(prova.ctx.stato(), bdgStatoOk);
  }
}

}  // namespace
}  // namespace bukorval
