
#include "grid/TestoGriglia.h"
#include "grid/TestoPeriodi.h"
#include "support/Expected.h"
#include "support/TestContext.h"

namespace {

/// The text of tests/grid/expected/NAME.sql.
std::string expected(const std::string& name, const testing_support::Marks& marks) {
  return testing_support::expected("grid/expected/" + name + ".sql", marks);
}

TEST(TestoGriglia, IsTheWholeStatementOfEachKindOfBudget) {
  const struct {
    std::string file;
    int type, forecasts;
    bool perSite;
  } rows[] = {{"budget_tipo1_senza_forecast", 1, 0, false},
              {"budget_tipo1_un_forecast", 1, 1, false},
              {"budget_tipo4_per_sede_tre_forecast", 4, 3, true},
              {"budget_tipo5_un_forecast", 5, 1, false}};
  for (const auto& row : rows) {
    testing_support::TestContext budget(row.type);
    budget.prop.SottoTipoBudget = "01";
    budget.prop.BdgTipoScheda = 0;
    budget.prop.CodiceSede = values::Decimal::FromScaled(3);
    const bukorval::ParametriGriglia parameters{"BU65_AREA_MG08,BU65_ZONA_MG09", "       , A AS B\r\n       , C AS D",
                                                "LEFT OUTER JOIN X ON Y = Z", row.perSite, row.forecasts};
    EXPECT_EQ(bukorval::testoGrigliaBudget(budget.ctx, parameters),
              expected(row.file, {{"{ELENCO}", parameters.elencoCampi},
                                  {"{CODICI}", parameters.codiciDescrizioni},
                                  {"{JOIN}", parameters.joinDescrizioni}}))
        << row.file;
  }
}

TEST(TestoPeriodi, IsTheWholeStatement) {
  EXPECT_EQ(bukorval::testoGrigliaPeriodi(17, std::int16_t{12}, 0),
            expected("periodi_senza_forecast", {{"{PERIODI}", "12"}}));
  EXPECT_EQ(bukorval::testoGrigliaPeriodi("17", values::Variant::Null(), 2),
            expected("periodi_due_forecast", {{"{PERIODI}", ""}}));
}

}  // namespace
