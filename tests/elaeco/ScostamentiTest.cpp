#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "elaeco/Scostamenti.h"
#include "support/ContestoDiProva.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

using testing_support::rows;
using values::Variant;

struct Prova : testing_support::ContestoDiProva {
  Prova() {
    prop.RstScostPerConto =
        rows({"CONTO", "FLGPERIODI", "PERCSCOST"}, {{"50000000", 0, 10},
                                                    {"50010000", 0, 0},
                                                    {"50020000", 0, 7.5},
                                                    {"50020001", 1, 99},
                                                    {"51000000", Variant::Null(), Variant::Null()}});
    prop.RstScostPerPeriodo =
        rows({"CONTO", "PERIODO", "PERCSCOST"}, {{"50020001", 3, -25}, {"50020001", 4, 0}, {"50990000", 5, 2}});
  }
  Variant chiedi(BdgTipoScostamento tipo, const Variant& conto, const Variant& periodo) {
    prop.TipoScostamento = tipo;
    return Scostamenti(ctx).GetPercentualeScostamento(conto, periodo);
  }
};

TEST(Scostamenti, EverySourceGivesItsPercentage) {
  struct Caso {
    const char* nome;
    BdgTipoScostamento tipo;
    Variant conto;
    Variant periodo;
    double attesa;
  };
  const Caso casi[] = {
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
  Prova prova;
  prova.prop.PercentualeScostamento = 4;
  for (const auto& caso : casi) {
    const auto risultato = prova.chiedi(caso.tipo, caso.conto, caso.periodo);
    EXPECT_DOUBLE_EQ(values::toDouble(risultato), caso.attesa) << caso.nome;
    EXPECT_EQ(prova.ctx.stato(), bdgStatoOk) << caso.nome << ": " << prova.ctx.errore();
  }
}

TEST(Scostamenti, AnUnknownSourceIsEmptyAndANullPercentageIsZero) {
  Prova prova;
  EXPECT_TRUE(prova.chiedi(1, "50010001", 1).isEmpty());
  prova.prop.PercentualeScostamento = Variant::Null();
  EXPECT_EQ(values::toInt32(prova.chiedi(0, "50010001", 1)), 0);
}

TEST(Scostamenti, FailuresKeepTheNameOfTheInnermostQuestion) {
  Prova prova;
  prova.prop.RstScostPerPeriodo = nullptr;
  prova.chiedi(2, "50020001", 3);
  EXPECT_THAT(prova.ctx.errore(), testing::EndsWith(" in GetPercentualeDaRstScostPerPeriodo"));
  prova.prop.RstScostPerConto = rows({"CODICE"}, {{"x"}});
  prova.chiedi(2, "50020001", 3);
  EXPECT_THAT(prova.ctx.errore(), testing::EndsWith(" in GetPercentualeDaRstScostPerConto "));
  prova.chiedi(0, "50020001", "x");
  EXPECT_THAT(prova.ctx.errore(), testing::EndsWith(" in GetPercentualeScostamento"));
}

TEST(Scostamenti, TheClientsSetsAreLeftAsTheLastSearchFilteredThem) {
  Prova prova;
  auto& conti = *prova.prop.RstScostPerConto;
  auto& periodi = *prova.prop.RstScostPerPeriodo;
  conti.Filter("PERCSCOST > 5");
  (*prova.prop.RstScostPerConto)["PERCSCOST"].Value(11);  // an edit under way counts
  EXPECT_EQ(values::toInt32(prova.chiedi(2, "50030001", 1)), 11);
  EXPECT_EQ(conti.Filter(), "CONTO = '50000000'");
  EXPECT_EQ(conti.RecordCount(), 1);
  EXPECT_EQ(values::toInt32(conti["PERCSCOST"].Value()), 11);
  EXPECT_EQ(periodi.Filter(), "");
  prova.chiedi(3, "50020001", 9);
  EXPECT_EQ(periodi.Filter(), "CONTO = '50020001' AND PERIODO = 9");
  EXPECT_TRUE(periodi.Eof());
  prova.chiedi(3, "", 5);
  EXPECT_EQ(periodi.Filter(), "PERIODO = 5");
  EXPECT_EQ(values::toInt32(periodi["PERCSCOST"].Value()), 2);
}

TEST(Scostamenti, TheParentOfAnAccountIsOneLevelUp) {
  Prova prova;
  const std::pair<const char*, const char*> casi[] = {
      {"50010001", "50010000"},
      {"50010000", "50000000"},
      {"52000000", "50000000"},
      {"50000000", ""},
      {"00000000", ""},
      {"", ""},
      {"5001000107", "5001000100"},
  };
  for (const auto& [conto, padre] : casi) EXPECT_EQ(values::toText(GetContoPadre(prova.ctx, 1, conto)), padre) << conto;
}

}  // namespace
}  // namespace bukorval
