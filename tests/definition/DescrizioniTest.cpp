#include "definition/Descrizioni.h"
#include "support/TestContext.h"

namespace {

using namespace bukorval;

TEST(Descrizioni, EveryCodeHasWordsOfItsOwnInBothForms) {
  testing_support::TestContext context;
  auto& ctx = context.ctx;
  const auto distinct = [](int from, int to, auto describe) {
    for (const Variant& form : {Variant(), Variant(1)}) {
      std::set<std::string> words;
      for (int code = from; code <= to; ++code) words.insert(describe(code, form));
      EXPECT_EQ(words.size(), static_cast<std::size_t>(to - from + 1));
      EXPECT_FALSE(words.contains(""));
      EXPECT_EQ(describe(from - 1, form), "");
      EXPECT_EQ(describe(to + 1, form), "");
    }
  };
  distinct(0, 9, [&](int code, const Variant& form) {
    return form.isEmpty() ? GetDescrizioneTipoBudget(ctx, code) : GetDescrizioneTipoBudgetShort(ctx, code);
  });
  distinct(0, 5, [&](int code, const Variant& form) { return GetDes_BdgPeriodicita(ctx, code, form); });
  distinct(0, 1, [&](int code, const Variant& form) { return GetDes_BdgPeriodoFiscaleSolare(ctx, code, form); });
  distinct(1, 3, [&](int code, const Variant& form) { return GetDes_BdgTipoPdc(ctx, code, form); });
  distinct(0, 2, [&](int code, const Variant& form) { return GetDes_BdgTipoGestioneMultiAttivita(ctx, code, form); });
}

TEST(Descrizioni, YesAndNoInAnyForm) {
  testing_support::TestContext context;
  for (const Variant& yes : {Variant(1), Variant(-1), Variant(true), Variant("1")})
    EXPECT_EQ(GetDes_BdgSiNo(context.ctx, yes), "Sì");
  EXPECT_EQ(GetDes_BdgSiNo(context.ctx, 0, 1), "N");
  EXPECT_EQ(GetDes_BdgSiNo(context.ctx, Variant::Null()), "");
  EXPECT_EQ(GetDes_BdgSiNo(context.ctx, "forse"), "");
  EXPECT_EQ(context.ctx.stato(), 99);
}

}  // namespace
