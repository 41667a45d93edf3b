#include "frame/Traccia.h"
#include "object/CLSKORVAL.h"
#include "support/Test.h"

namespace {

using namespace bukorval;
using testing::EndsWith;

TEST(CLSKORVAL, TracesItsLifeUnderOneIdentifier) {
  std::vector<std::string> lines;
  impostaCanaleTraccia([&](const std::string& line) { lines.push_back(line.substr(6, 36)); });
  { CLSKORVAL first, second; }
  impostaCanaleTraccia({});
  ASSERT_EQ(lines.size(), 4u);
  const auto id = [&](std::size_t i) { return lines[i].substr(0, 32); };
  EXPECT_EQ(lines, (std::vector{id(0) + "|INI", id(1) + "|INI", id(1) + "|TER", id(0) + "|TER"}));
  EXPECT_NE(id(0), id(1));
}

TEST(CLSKORVAL, ResetsTheOutcomeInEveryMethodButNvlAndBFill) {
  CLSKORVAL bo;
  EXPECT_EQ(bo.Stato(), bdgStatoOk);
  EXPECT_EQ(bo.errore(), "");
  EXPECT_TRUE(bo.CDecN("dodici").isEmpty());
  EXPECT_EQ(bo.Stato(), bdgStatoErrore);
  EXPECT_THAT(bo.errore(), EndsWith(" in CDecN"));
  EXPECT_EQ(bo.NVL("  ", 5), Variant(5));
  EXPECT_EQ(bo.BFill("ab", 4), Variant("ab  "));
  EXPECT_THAT(bo.errore(), EndsWith(" in CDecN"));
  EXPECT_EQ(bo.RTrimN("  a "), Variant("  a"));
  EXPECT_EQ(bo.Stato(), bdgStatoOk);
  bo.RTrimN(std::make_shared<values::Object>());
  EXPECT_THAT(bo.errore(), EndsWith(" in RTrimN"));
  EXPECT_EQ(bo.GetNaturaBudget(0), 1);
  EXPECT_EQ(bo.Stato(), bdgStatoOk);
  EXPECT_EQ(bo.errore(), "");
}

}  // namespace
