#include <gtest/gtest.h>

#include <set>

#include "definition/Banco.h"
#include "definition/Descrizioni.h"

namespace {

using namespace bukorval;
using values::Variant;

TEST(Descrizioni, EveryCodeHasWordsOfItsOwnInBothForms) {
  definition_tests::Banco banco;
  auto& ctx = banco.ctx;
  const auto distinte = [](int da, int a, auto descrivi) {
    for (const Variant& forma : {Variant(), Variant(1)}) {
      std::set<std::string> parole;
      for (int codice = da; codice <= a; ++codice) parole.insert(descrivi(codice, forma));
      EXPECT_EQ(parole.size(), static_cast<std::size_t>(a - da + 1));
      EXPECT_FALSE(parole.contains(""));
      EXPECT_EQ(descrivi(da - 1, forma), "");
      EXPECT_EQ(descrivi(a + 1, forma), "");
    }
  };
  distinte(0, 9, [&](int codice, const Variant& forma) {
    return forma.isEmpty() ? GetDescrizioneTipoBudget(ctx, codice) : GetDescrizioneTipoBudgetShort(ctx, codice);
  });
  distinte(0, 5, [&](int codice, const Variant& forma) { return GetDes_BdgPeriodicita(ctx, codice, forma); });
  distinte(0, 1, [&](int codice, const Variant& forma) { return GetDes_BdgPeriodoFiscaleSolare(ctx, codice, forma); });
  distinte(1, 3, [&](int codice, const Variant& forma) { return GetDes_BdgTipoPdc(ctx, codice, forma); });
  distinte(0, 2,
           [&](int codice, const Variant& forma) { return GetDes_BdgTipoGestioneMultiAttivita(ctx, codice, forma); });
}

TEST(Descrizioni, YesAndNoInAnyForm) {
  definition_tests::Banco banco;
  for (const Variant& si : {Variant(1), Variant(-1), Variant(true), Variant("1")})
    EXPECT_EQ(GetDes_BdgSiNo(banco.ctx, si), "Sì");
  EXPECT_EQ(GetDes_BdgSiNo(banco.ctx, 0, 1), "N");
  EXPECT_EQ(GetDes_BdgSiNo(banco.ctx, Variant::Null()), "");
  EXPECT_EQ(GetDes_BdgSiNo(banco.ctx, "forse"), "");
  EXPECT_EQ(banco.ctx.stato(), 99);
}

}  // namespace
