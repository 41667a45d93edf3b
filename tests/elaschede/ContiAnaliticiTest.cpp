#include "elaschede/ContiAnalitici.h"
#include "support/TestContext.h"

namespace {

using namespace bukorval;

TEST(ContiAnalitici, TheTailOfTheCodeStructureDecides) {
  const struct {
    const char* account;
    int structure;
    bool flag;
    bool analytic;
  } rows[] = {
      {"50010001", 4, false, true},  {"50010000", 4, false, false}, {"50100000", 2, false, false},
      {"50100001", 2, false, true},  {"50010100", 5, false, false}, {"50010101", 5, false, true},
      {"50010000", 3, false, false}, {"50010001", 6, false, false}, {"50010001", 1, false, false},
      {"50000000", 9, true, false},  {"50010000", 9, true, true},   {"10", 4, false, true},
      {"", 4, false, false},
  };
  testing_support::TestContext context;
  for (const auto& row : rows) {
    context.session->structure = row.structure;
    EXPECT_EQ(IsContoAnalitico(context.ctx, row.account, row.flag), row.analytic)
        << row.account << " structure " << row.structure;
  }
  context.prop.ActiveInterface = nullptr;
  EXPECT_FALSE(IsContoAnalitico(context.ctx, "5001", false));
  EXPECT_THAT(context.outcome(), testing::MatchesRegex("99 .* in IsContoAnalitico "));
}

TEST(ContiAnalitici, TheLastParentEndsWithTheLastLevelThatSaysSomething) {
  const std::pair<const char*, const char*> rows[] = {
      {"50010000", "5001"},     {"50000000", "5"},       {"52000000", "52"},
      {"50010001", "50010001"}, {"00000000", ""},        {"500100000007", "500100000007"},
      {"5001", "5001"},         {"50010000   ", "5001"},
  };
  testing_support::TestContext context;
  for (const auto& [account, parent] : rows)
    EXPECT_EQ(BdgElaSchede_GetUltimoPadrePdc(context.ctx, account), parent) << account;
}

}  // namespace
