#include "dati/import/FinanceFolder.h"

#include <algorithm>
#include <filesystem>
#include <optional>

#include "dati/Failure.h"
#include "dati/import/CsvModel.h"
#include "language/Language.h"
#include "values/Conversion.h"
#include "values/FileName.h"

namespace bukorval::dati {
namespace {

const CsvModel kAccounts{"accounts",
                         {{"code", CsvType::Text, true, 4, ""},
                          {"parent", CsvType::Text, false, 4, ""},
                          {"description", CsvType::Text, true, 80, ""},
                          {"type", CsvType::Text, false, 20, ""},
                          {"operator", CsvType::Text, false, 1, ""}}};

/// Sites and departments.
const CsvModel kCodes{"codes",
                      {{"code", CsvType::Integer, true, 2, ""},
                       {"parent", CsvType::Integer, false, 2, ""},
                       {"description", CsvType::Text, true, 80, ""}}};

enum : std::size_t { kDate, kSite, kDepartment, kScenario, kAccount, kAmount };
const CsvModel kAmounts{"amounts",
                        {{"date", CsvType::Date, true, 0, ""},
                         {"site", CsvType::Integer, true, 2, ""},
                         {"department", CsvType::Integer, true, 2, ""},
                         {"scenario", CsvType::Text, true, 10, ""},
                         {"account", CsvType::Text, true, 4, ""},
                         {"amount", CsvType::Amount, true, 0, ""}}};

std::map<int, std::string> readCodes(const std::string& file, const char* what, Problems& problems,
                                     const CsvReading& reading) {
  std::map<int, std::string> codes;
  for (const auto& row : readCsv(file, kCodes, problems, reading).rows) {
    if (row.values[0].isEmpty()) continue;
    const int code = values::toInt32(row.values[0]);
    if (!codes.emplace(code, values::toText(row.values[2])).second)
      problems.add(file, row.line, tr("{}{} stands twice", what, code));
  }
  return codes;
}

std::optional<Scenario> scenarioOf(const std::string& text) {
  if (text == "actual") return Scenario::Actual;
  if (text == "budget") return Scenario::Budget;
  if (text == "forecast") return Scenario::Forecast;
  return std::nullopt;
}

/// Adds the amount of a line, or what is wrong with it.
void addAmount(const CsvRow& row, const std::string& file, FinanceFolder& finance, Problems& problems) {
  const auto text = [&](std::size_t field) { return values::toText(row.values[field]); };
  const auto number = [&](std::size_t field) { return values::toInt32(row.values[field]); };
  const auto scenario = scenarioOf(text(kScenario));
  bool right = true;
  const auto require = [&](bool holds, const char* problem, std::size_t field) {
    if (!holds) problems.add(file, row.line, tr(problem, text(field)));
    right = right && holds;
  };
  require(scenario.has_value(), "column scenario: '{}' is not actual, budget or forecast", kScenario);
  require(finance.accounts.contains(text(kAccount)), "no account {}", kAccount);
  require(finance.sites.contains(number(kSite)), "no site {}", kSite);
  require(finance.departments.contains(number(kDepartment)), "no department {}", kDepartment);
  if (right)
    finance.amounts.push_back({monthOf(values::toDate(row.values[kDate])), number(kSite), number(kDepartment),
                               *scenario, text(kAccount), values::toDecimal(row.values[kAmount])});
}

bool isComplete(const CsvRow& row) {
  return std::ranges::none_of(row.values, [](const auto& value) { return value.isEmpty(); });
}

}  // namespace

bool FinanceFolder::isRevenue(const std::string& account) const {
  const auto& type = accounts.at(account).type;
  return type == "Revenue" || type == "Liabilities";
}

bool FinanceFolder::hasForecasts() const {
  return std::ranges::any_of(amounts, [](const auto& amount) { return amount.scenario == Scenario::Forecast; });
}

values::Date monthOf(const values::Date& day) { return (day.day() <= 15 ? day.addMonths(-1) : day).lastOfMonth(); }

FinanceFolder readFinanceFolder(const std::string& folder, Problems& problems, const CsvReading& reading) {
  if (!std::filesystem::is_directory(values::pathOf(folder)))
    throw Refused(
        tr("There is no folder {}: give the one that holds amounts.csv, accounts.csv, sites.csv and departments.csv",
           folder));
  const auto file = [&](const char* name) { return values::nameOf(values::pathOf(folder) / name); };
  FinanceFolder finance;
  for (const auto& row : readCsv(file("accounts.csv"), kAccounts, problems, reading).rows) {
    if (row.values[0].isEmpty()) continue;
    const auto text = [&](std::size_t field) { return values::toText(row.values[field]); };
    if (!finance.accounts.emplace(text(0), FinanceAccount{text(1), text(2), text(3)}).second)
      problems.add(file("accounts.csv"), row.line, tr("account {} stands twice", text(0)));
  }
  finance.sites = readCodes(file("sites.csv"), "site ", problems, reading);
  finance.departments = readCodes(file("departments.csv"), "department ", problems, reading);
  const auto amounts = readCsv(file("amounts.csv"), kAmounts, problems, reading);
  finance.amounts.reserve(amounts.rows.size());
  for (const auto& row : amounts.rows) {
    if (isComplete(row)) addAmount(row, amounts.file, finance, problems);
  }
  return finance;
}

}  // namespace bukorval::dati
