#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "elaschede/ContiAnalitici.h"
#include "support/ContestoDiProva.h"

namespace bukorval {
namespace {

TEST(ContiAnalitici, TheTailOfTheCodeStructureDecides) {
  struct Caso {
    const char* conto;
    int struttura;
    bool flag;
    bool analitico;
  };
  const Caso casi[] = {
      {"50010001", 4, false, true},  {"50010000", 4, false, false}, {"50100000", 2, false, false},
      {"50100001", 2, false, true},  {"50010100", 5, false, false}, {"50010101", 5, false, true},
      {"50010000", 3, false, false}, {"50010001", 6, false, false}, {"50010001", 1, false, false},
      {"50000000", 9, true, false},  {"50010000", 9, true, true},   {"10", 4, false, true},
      {"", 4, false, false},
  };
  for (const auto& caso : casi) {
    testing_support::ContestoDiProva prova;
    prova.sessione->struttura = caso.struttura;
    EXPECT_EQ(IsContoAnalitico(prova.ctx, caso.conto, caso.flag), caso.analitico)
        << caso.conto << " structure " << caso.struttura;
  }
}

TEST(ContiAnalitici, TheLastParentEndsWithTheLastLevelThatSaysSomething) {
  const std::pair<const char*, const char*> casi[] = {
      {"50010000", "5001"},     {"50000000", "5"},       {"52000000", "52"},
      {"50010001", "50010001"}, {"00000000", ""},        {"500100000007", "500100000007"},
      {"5001", "5001"},         {"50010000   ", "5001"},
  };
  testing_support::ContestoDiProva prova;
  for (const auto& [conto, padre] : casi) EXPECT_EQ(BdgElaSchede_GetUltimoPadrePdc(prova.ctx, conto), padre) << conto;
}

TEST(ContiAnalitici, WithoutASessionTheFailureNamesTheQuestion) {
  testing_support::ContestoDiProva prova;
  prova.prop.ActiveInterface = nullptr;
  EXPECT_FALSE(IsContoAnalitico(prova.ctx, "5001", false));
  EXPECT_EQ(prova.ctx.stato(), bdgStatoErrore);
  EXPECT_THAT(prova.ctx.errore(), testing::EndsWith(" in IsContoAnalitico "));
}

}  // namespace
}  // namespace bukorval
