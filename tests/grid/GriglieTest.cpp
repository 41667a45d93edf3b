#include "grid/GrigliaBudget.h"
#include "grid/GrigliaPeriodi.h"
#include "support/TestContext.h"

namespace {

using bukorval::GrigliaBudget, bukorval::GrigliaPeriodi, testing_support::TestContext;

/// A budget without structure, and what its definition is asked before the grid's own statement.
struct Defined : TestContext {
  Defined() { define({{"BU01_FLGSEDI", 0}, {"BU01_NUMFORECAST", 0}}); }
};

/// A card's grid by period: what its definition is asked first.
struct DefinedPeriods : TestContext {
  explicit DefinedPeriods(int forecasts) { define({{"BU01_NUMFORECAST", forecasts}, {"BU01_INDPERIODO", 0}}); }
};

TEST(GrigliaBudget, CopiesRowsByNameIntoTypedFields) {
  Defined budget;
  budget.answer(
      {"IMP_BUDGET", "bu65_id", "BU65_DITTA_CG18", "QTA1_BUDGET", "BU65_SCHEDA_BU07"},
      {{Decimal::FromScaled(12345, 3), 7, 1, 2.0005, "S1"}, {Variant::Null(), 8, 1, Variant::Null(), Variant::Null()}});
  const auto grid = GrigliaBudget(budget.ctx).RecordSetBudget();
  ASSERT_EQ(budget.outcome(), "0 ");
  ASSERT_EQ(grid->RecordCount(), 2);
  EXPECT_EQ(values::toPlainText((*grid)["BU65_ID"].Value()), "7");
  EXPECT_EQ(values::toPlainText((*grid)["IMP_BUDGET"].Value()), "12.35");
  EXPECT_EQ(values::toPlainText((*grid)["QTA1_BUDGET"].Value()), "2.001");
  EXPECT_TRUE((*grid)["DELTAIMP_CONS"].Value().isNull());
  grid->MoveNext();
  EXPECT_EQ(values::toPlainText((*grid)["BU65_ID"].Value()), "8");
  EXPECT_TRUE((*grid)["IMP_BUDGET"].Value().isNull());
}

TEST(GrigliaBudget, GivesNoGridAfterAFailure) {
  const std::string procedures[] = {"GetStruttura", "RecordSetBudget"};
  for (std::size_t k = 1; k <= std::size(procedures); ++k) {
    Defined budget;
    budget.failAt(k);
    EXPECT_FALSE(GrigliaBudget(budget.ctx).RecordSetBudget());
    EXPECT_EQ(budget.outcome(), "99 boom in " + procedures[k - 1]);
    EXPECT_EQ(budget.db->texts.size(), k);
  }
  // A column that the grid lacks, and a value that its field cannot hold.
  for (const auto& field : {"IMPREVISTO", "BU65_DITTA_CG18"}) {
    Defined budget;
    budget.answer({field}, {{100000}});
    EXPECT_FALSE(GrigliaBudget(budget.ctx).RecordSetBudget());
    EXPECT_THAT(budget.outcome(), testing::MatchesRegex("99 .*" + std::string(field) + ".* in RecordSetBudget"));
  }
  TestContext budget;
  EXPECT_FALSE(GrigliaBudget(budget.ctx).CreaRecordSetBudget("BU65_NIENTE", 0));
  EXPECT_THAT(budget.ctx.errore(), testing::EndsWith(" in CreaRecordSetBudget"));
}

TEST(GrigliaBudget, WithoutAConnectionTheGridIsEmpty) {
  TestContext budget;
  budget.ctx.connessione(nullptr);
  const auto grid = GrigliaBudget(budget.ctx).RecordSetBudget();
  ASSERT_TRUE(grid);
  EXPECT_EQ(grid->RecordCount(), 0);
  EXPECT_TRUE(grid->Fields().Find("IMP_FORECAST1"));
  EXPECT_EQ(budget.outcome(), "1 Non è stata definita la stringa di connessione");
}

TEST(GrigliaBudget, AccountRangeOfEachChartKind) {
  const struct {
    int kind;
    std::string chart, account;
  } rows[] = {{1, "BU65_GRUPPO_CG10", "BU65_CONTO_CG24"},
              {2, "BU65_CODICE_CG21", "BU65_CODICE_CG23"},
              {3, "BU65_CODICE_PC01", "BU65_CONTO_PC03"}};
  for (const auto& row : rows) {
    TestContext budget;
    budget.ctx.dati.tipoPdc = row.kind;
    budget.ctx.dati.codicePdc = Decimal::FromScaled(5);
    const std::string chart = " AND    " + row.chart + " = 5\r\n";
    budget.prop.AConto = " ";
    EXPECT_EQ(GrigliaBudget(budget.ctx).GetStringaDaContoAConto(), chart);
    budget.prop.DaConto = "100";
    budget.prop.AConto = "199";
    EXPECT_EQ(GrigliaBudget(budget.ctx).GetStringaDaContoAConto(),
              chart + " AND    " + row.account + " >= '100'\r\n AND    " + row.account + " <= '199'\r\n");
  }
}

TEST(GrigliaPeriodi, AsksForThePeriodsOfThePeriodicity) {
  const std::pair<int, std::string> rows[] = {{0, "12"}, {1, "6"}, {2, "4"}, {3, "3"}, {4, "2"}, {5, "1"}, {6, ""}};
  for (const auto& [periodicity, periods] : rows) {
    TestContext budget;
    budget.define({{"BU01_INDPERIODO", periodicity}});
    EXPECT_THAT(GrigliaPeriodi(budget.ctx).GetStringaPeriodiBudget(17, 0),
                testing::HasSubstr("\r\n WHERE PERIODO < " + periods + "\r\n)\r\n"));
    EXPECT_EQ(budget.outcome(), "0 ");
  }
}

TEST(GrigliaPeriodi, HandsOutWhatWasBuiltBeforeAFailure) {
  const std::string procedures[] = {"GetNumeroForecast", "RecSetPeriodiBudget"};
  for (std::size_t k = 1; k <= 2; ++k) {
    DefinedPeriods budget(2);
    budget.failAt(k);
    const auto grid = GrigliaPeriodi(budget.ctx).RecSetPeriodiBudget(17);
    EXPECT_EQ(grid != nullptr, k > 1);
    EXPECT_EQ(budget.outcome(), "99 boom in " + procedures[k - 1]);
  }
  DefinedPeriods budget(0);
  budget.answer({"PERIODO", "IMP_BUDGET"}, {{1, 10}, {2, "tanto"}});
  const auto grid = GrigliaPeriodi(budget.ctx).RecSetPeriodiBudget(17);
  ASSERT_TRUE(grid);
  EXPECT_EQ(grid->RecordCount(), 1);
  EXPECT_THAT(budget.ctx.errore(), testing::EndsWith(" in RecSetPeriodiBudget"));
}

TEST(GrigliaPeriodi, ACardOfZeroGivesTheEmptyGrid) {
  for (const Variant& id : {Variant(0), Variant{}, Variant("0"), Variant(Decimal::FromScaled(0, 2))}) {
    DefinedPeriods budget(1);
    const auto grid = GrigliaPeriodi(budget.ctx).RecSetPeriodiBudget(id);
    EXPECT_EQ(grid->RecordCount(), 0);
    EXPECT_TRUE(grid->Fields().Find("ID_FORECAST1"));
    EXPECT_EQ(budget.db->texts.size(), 1u);
    EXPECT_EQ(budget.outcome(), "0 ");
  }
  DefinedPeriods budget(1);
  GrigliaPeriodi(budget.ctx).RecSetPeriodiBudget("17 OR 1=1");
  EXPECT_EQ(budget.ctx.stato(), 99);
  EXPECT_EQ(budget.db->texts.size(), 1u);
}

TEST(GrigliaPeriodi, CashFlowRowsOfACard) {
  TestContext budget;
  budget.answer({"BU67_ID_BU65"}, {{17}});
  const auto rows = GrigliaPeriodi(budget.ctx).GetRstBU67(Decimal::FromScaled(17));
  ASSERT_TRUE(rows);
  EXPECT_EQ(rows->RecordCount(), 1);
  EXPECT_THAT(budget.db->texts, testing::ElementsAre(" SELECT  * \r\n FROM    BU67_BDGCASHFLOW WITH(NOLOCK) "
                                                     " WHERE   BU67_ID_BU65 = 17\r\n"));
  budget.failAt(2);
  EXPECT_FALSE(GrigliaPeriodi(budget.ctx).GetRstBU67(17));
  EXPECT_EQ(budget.outcome(), "99 boom in GetRstBU67");
}

}  // namespace
