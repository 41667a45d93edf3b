#include "elaeco/Scostamenti.h"
#include "support/TestContext.h"

namespace {

using namespace bukorval;
using testing_support::rows;

struct Deviations : testing::Test, testing_support::TestContext {
  Deviations() {
    prop.RstScostPerConto =
        rows({"CONTO", "FLGPERIODI", "PERCSCOST"}, {{"50000000", 0, 10},
                                                    {"50010000", 0, 0},
                                                    {"50020000", 0, 7.5},
                                                    {"50020001", 1, 99},
                                                    {"51000000", Variant::Null(), Variant::Null()}});
    prop.RstScostPerPeriodo =
        rows({"CONTO", "PERIODO", "PERCSCOST"}, {{"50020001", 3, -25}, {"50020001", 4, 0}, {"50990000", 5, 2}});
    prop.PercentualeScostamento = 4;
  }
  Variant ask(BdgTipoScostamento kind, const Variant& account, const Variant& period) {
    prop.TipoScostamento = kind;
    return bukorval::Scostamenti(ctx).GetPercentualeScostamento(account, period);
  }
};

TEST_F(Deviations, EverySourceGivesItsPercentage) {
  const struct {
    const char* name;
    BdgTipoScostamento kind;
    Variant account;
    Variant period;
    double expected;
  } cases[] = {
      {"fixed", 0, "50010001", 1, 4},
      {"none", 99, "50010001", 1, 0},
      {"own row", 2, "50020000", 1, 7.5},
      {"from the parent when there is no row", 2, "50020007", 1, 7.5},
      {"past a row with zero", 2, "50010001", 1, 10},
      {"from the first level", 2, "50030000", 1, 10},
      {"none up the tree", 2, "60010001", 1, 0},
      {"past a row of nulls", 2, "51000000", 1, 10},
      {"per period of the account", 2, "50020001", 3, -25},
      {"per period without a row goes up", 2, "50020001", 9, 7.5},
      {"per period with zero goes up", 2, "50020001", 4, 7.5},
      {"per period with period 0 goes up", 2, "50020001", 0, 7.5},
      {"empty account", 2, "", 1, 0},
      {"by account and period", 3, "50020001", 3, -25},
      {"by period only", 3, Variant::Null(), 5, 2},
      {"by period, missing", 3, "50020001", 7, 0},
      {"by period 0", 3, "50020001", 0, 0},
  };
  // One context for all cases: an earlier search leaves its filter on the sets and must not mislead the next one.
  for (const auto& c : cases) {
    EXPECT_DOUBLE_EQ(values::toDouble(ask(c.kind, c.account, c.period)), c.expected) << c.name;
    EXPECT_EQ(outcome(), "0 ") << c.name;
  }
  EXPECT_TRUE(ask(1, "50010001", 1).isEmpty()) << "an unknown source";
  prop.PercentualeScostamento = Variant::Null();
  EXPECT_EQ(values::toInt32(ask(0, "50010001", 1)), 0);
}

TEST_F(Deviations, FailuresKeepTheNameOfTheInnermostQuestion) {
  prop.RstScostPerPeriodo = nullptr;
  ask(2, "50020001", 3);
  EXPECT_THAT(ctx.errore(), testing::EndsWith(" in GetPercentualeDaRstScostPerPeriodo"));
  prop.RstScostPerConto = rows({"CODICE"}, {{"x"}});
  ask(2, "50020001", 3);
  EXPECT_THAT(ctx.errore(), testing::EndsWith(" in GetPercentualeDaRstScostPerConto "));
  ask(0, "50020001", "x");
  EXPECT_THAT(ctx.errore(), testing::EndsWith(" in GetPercentualeScostamento"));
}

TEST_F(Deviations, TheClientsSetsAreLeftAsTheLastSearchFilteredThem) {
  auto& conti = *prop.RstScostPerConto;
  auto& periodi = *prop.RstScostPerPeriodo;
  conti.Filter("PERCSCOST > 5");
  (*prop.RstScostPerConto)["PERCSCOST"].Value(11);  // an edit under way counts
  EXPECT_EQ(values::toInt32(ask(2, "50030001", 1)), 11);
  EXPECT_EQ(conti.Filter(), "CONTO = '50000000'");
  EXPECT_EQ(conti.RecordCount(), 1);
  EXPECT_EQ(values::toInt32(conti["PERCSCOST"].Value()), 11);
  EXPECT_EQ(periodi.Filter(), "");
  ask(3, "50020001", 9);
  EXPECT_EQ(periodi.Filter(), "CONTO = '50020001' AND PERIODO = 9");
  EXPECT_TRUE(periodi.Eof());
  ask(3, "", 5);
  EXPECT_EQ(periodi.Filter(), "PERIODO = 5");
  EXPECT_EQ(values::toInt32(periodi["PERCSCOST"].Value()), 2);
}

TEST_F(Deviations, TheParentOfAnAccountIsOneLevelUp) {
  const std::pair<const char*, const char*> cases[] = {{"50010001", "50010000"},
                                                       {"50010000", "50000000"},
                                                       {"52000000", "50000000"},
                                                       {"50000000", ""},
                                                       {"00000000", ""},
                                                       {"5001000107", "5001000100"},
                                                       {"", ""}};
  for (const auto& [account, parent] : cases)
    EXPECT_EQ(values::toText(GetContoPadre(ctx, 1, account)), parent) << account;
}

}  // namespace
