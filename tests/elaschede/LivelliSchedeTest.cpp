#include "elaschede/LivelliSchede.h"
#include "support/TestContext.h"

namespace {

using namespace bukorval;
using testing_support::TestContext;

TEST(LivelliSchede, ReadsTheCompanysNumberOfLevels) {
  const struct {
    std::vector<std::vector<Variant>> found;
    bool expected;
    Variant levels;
  } rows[] = {{{{4}}, true, 4}, {{{Variant::Null()}}, true, 3}, {{}, false, 3}};
  TestContext context;
  for (const auto& row : rows) {
    context.answer({"BU05_NUMLIVELLI"}, row.found);
    Variant levels = 3;
    EXPECT_EQ(GetIsBdgSchedePersonalizzazioneLivelliEsiste(context.ctx, 7, 1, levels), row.expected);
    EXPECT_EQ(levels, row.levels);
    EXPECT_EQ(context.db->texts.back(),
              " SELECT  BU05_NUMLIVELLI \r\n FROM    BU05_PERSCHCOSGEN WITH(NOLOCK) \r\n"
              " WHERE   BU05_DITTA_CG18 = 7\r\n AND     BU05_INDCOSRIC = 1\r\n");
  }
  Variant levels = 3;
  EXPECT_FALSE(GetIsBdgSchedePersonalizzazioneLivelliEsiste(context.ctx, Variant::Null(), 1, levels));
  EXPECT_FALSE(GetIsBdgSchedePersonalizzazioneLivelliEsiste(context.ctx, 7, " ", levels));
  EXPECT_EQ(context.db->texts.size(), std::size(rows));
}

TEST(LivelliSchede, ComparesTheConfiguredLevels) {
  TestContext context;
  const std::pair<Variant, bool> rows[] = {{2, true}, {"2", true}, {3, false}, {Variant::Null(), false}};
  for (const auto& [levels, expected] : rows) {
    context.answer({"BU06_LIVELLO"}, {{1}, {2}});
    EXPECT_EQ(GetIsBdgSchedeConfigurazioneLivelliEsiste(context.ctx, 7, 1, levels), expected);
    EXPECT_EQ(context.db->texts.back(),
              " SELECT  BU06_LIVELLO  FROM    BU06_CONFIGLIVCOSGEN WITH(NOLOCK)  WHERE   BU06_DITTA_CG18 = 7"
              " AND     BU06_INDCOSRIC = 1");
    EXPECT_EQ(context.outcome(), "0 ");
  }
}

}  // namespace
