#include "dati/import/FinanceChart.h"
#include "dati/import/FinanceFolder.h"
#include "support/Test.h"

namespace {

using namespace bukorval::dati;

TEST(FinanceFolder, ADayNearAMonthEndStandsForItsMonth) {
  const std::pair<Date, Date> cases[] = {
      {Date::FromYmd(2011, 3, 1), Date::FromYmd(2011, 2, 28)},
      {Date::FromYmd(2011, 3, 31), Date::FromYmd(2011, 3, 31)},
      {Date::FromYmd(2012, 1, 1), Date::FromYmd(2011, 12, 31)},
      {Date::FromYmd(2012, 2, 28), Date::FromYmd(2012, 2, 29)},
  };
  for (const auto& [day, month] : cases) EXPECT_EQ(monthOf(day), month) << day.toText();
}

TEST(FinanceChart, TheChartHasGroupsAccountsAndDepartments) {
  FinanceFolder date;
  date.accounts = {
      {"60", {"40", "Operating Expenses", "Expenditures"}}, {"600", {"60", "Labor Expenses", "Expenditures"}},
      {"6000", {"600", "Salaries", "Expenditures"}},        {"6020", {"600", "Payroll Taxes", "Expenditures"}},
      {"6100", {"60", "Commissions", "Expenditures"}},      {"2210", {"2200", "Notes Payable", "Liabilities"}}};
  date.departments = {{3, "Manufacturing"}};
  for (const char* account : {"6000", "6020", "6100", "2210"}) {
    date.amounts.push_back({Date::FromYmd(2011, 1, 31), 1, 3, Scenario::Budget, account, Decimal::FromScaled(1)});
  }
  const std::tuple<const char*, const char*, int, bool> cases[] = {
      {"60000003", "Salaries - Manufacturing", 2, false},
      {"60000000", "Labor Expenses", 2, true},
      {"60200000", "Payroll Taxes", 2, true},
      {"61000000", "Commissions", 2, true},
      {"22100003", "Notes Payable - Manufacturing", 0, false},
  };
  const auto chart = chartOf(date);
  for (const auto& [code, description, nature, total] : cases) {
    ASSERT_TRUE(chart.contains(code)) << code;
    EXPECT_EQ(chart.at(code).description, description);
    EXPECT_EQ(chart.at(code).nature, nature) << code;
    EXPECT_EQ(chart.at(code).total, total) << code;
  }
  EXPECT_EQ(cardCode("6020", 3), "602003");
  EXPECT_TRUE(date.isRevenue("2210"));
}

}  // namespace
