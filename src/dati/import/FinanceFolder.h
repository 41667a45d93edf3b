#pragma once

#include <map>
#include <string>
#include <vector>

#include "dati/import/CsvModel.h"
#include "dati/import/Problems.h"
#include "values/Date.h"
#include "values/Decimal.h"

namespace bukorval::dati {

struct FinanceAccount {
  std::string parent, description, type;
};

enum class Scenario { Actual, Budget, Forecast };

struct FinanceAmount {
  values::Date month;  ///< the last day of the month it stands for
  int site = 0;
  int department = 0;
  Scenario scenario = Scenario::Actual;
  std::string account;
  values::Decimal amount;
};

/// A folder of monthly amounts by site, department and account: amounts.csv, accounts.csv, sites.csv,
/// departments.csv.
struct FinanceFolder {
  std::map<std::string, FinanceAccount> accounts;
  std::map<int, std::string> sites, departments;
  std::vector<FinanceAmount> amounts;

  /// An account that is kept on the credit side: revenue and liabilities.
  bool isRevenue(const std::string& account) const;
  bool hasForecasts() const;
};

/// Reads and checks the four files; codes that amounts.csv uses and the other files lack are problems too.
/// Throws Refused when the folder or a file is missing.
FinanceFolder readFinanceFolder(const std::string& folder, Problems& problems, const CsvReading& reading = {});

/// A day near a month end stands for its month: the first half of a month belongs to the month before.
values::Date monthOf(const values::Date& day);

}  // namespace bukorval::dati
