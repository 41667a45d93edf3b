#include "dati/import/FinanceFolder.h"

#include <algorithm>
#include <filesystem>

#include "dati/Failure.h"
#include "dati/import/CsvModel.h"
#include "values/Conversion.h"
#include "values/Errore.h"

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

std::map<int, std::string> readCodes(const std::string& file, Problems& problems) {
  std::map<int, std::string> codes;
  for (const auto& row : readCsv(file, kCodes, problems).rows) {
    if (row.values[0].isEmpty()) continue;
    codes[values::toInt32(row.values[0])] = values::toText(row.values[2]);
  }
  return codes;
}

Scenario parseScenario(const std::string& text) {
  if (text == "actual") return Scenario::Actual;
  if (text == "budget") return Scenario::Budget;
  if (text == "forecast") return Scenario::Forecast;
  throw values::Errore("column scenario: '" + text + "' is not actual, budget or forecast");
}

FinanceAmount parseAmount(const CsvRow& row, const FinanceFolder& finance) {
  FinanceAmount amount{monthOf(values::toDate(row.values[kDate])), values::toInt32(row.values[kSite]),
                       values::toInt32(row.values[kDepartment]),   parseScenario(values::toText(row.values[kScenario])),
                       values::toText(row.values[kAccount]),       values::toDecimal(row.values[kAmount])};
  if (!finance.accounts.contains(amount.account)) throw values::Errore("no account " + amount.account);
  if (!finance.sites.contains(amount.site)) throw values::Errore("no site " + std::to_string(amount.site));
  if (!finance.departments.contains(amount.department))
    throw values::Errore("no department " + std::to_string(amount.department));
  return amount;
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

FinanceFolder readFinanceFolder(const std::string& folder, Problems& problems) {
  if (!std::filesystem::is_directory(folder))
    throw Refused("There is no folder " + folder +
                  ": give the one that holds amounts.csv, accounts.csv, sites.csv and departments.csv");
  const auto file = [&](const char* name) { return (std::filesystem::path(folder) / name).string(); };
  FinanceFolder finance;
  for (const auto& row : readCsv(file("accounts.csv"), kAccounts, problems).rows) {
    if (row.values[0].isEmpty()) continue;
    const auto text = [&](std::size_t field) { return values::toText(row.values[field]); };
    finance.accounts[text(0)] = {text(1), text(2), text(3)};
  }
  finance.sites = readCodes(file("sites.csv"), problems);
  finance.departments = readCodes(file("departments.csv"), problems);
  const auto amounts = readCsv(file("amounts.csv"), kAmounts, problems);
  finance.amounts.reserve(amounts.rows.size());
  for (const auto& row : amounts.rows) {
    if (!isComplete(row)) continue;
    try {
      finance.amounts.push_back(parseAmount(row, finance));
    } catch (const values::Errore& e) {
      problems.add(amounts.file, row.line, e.what());
    }
  }
  return finance;
}

}  // namespace bukorval::dati
