#pragma once

#include <map>
#include <string>

#include "dati/import/FinanceFolder.h"

/// How accounts and departments of the finance folder become codes of the suite.
///
/// Movements are selected by account and site, so a department is the last level of the account: 6020 of
/// department 3 is 60200003. Accounts 60xx make the group 60000000.
namespace bukorval::dati {

/// Levels of 2, 2 and 4 digits.
inline constexpr int kFinanceAccountStructure = 3;

struct ChartAccount {
  std::string description;
  int nature = 0;  ///< 0 balance sheet, 1 revenue, 2 cost
  bool total = false;
};

std::string accountCode(const std::string& account, int department);
inline std::string accountCode(const FinanceAmount& amount) { return accountCode(amount.account, amount.department); }
/// 6020 of department 3 is card 602003.
std::string cardCode(const std::string& account, int department);
/// "Payroll Taxes - Manufacturing", at most 40 characters.
std::string accountDescription(const FinanceFolder& finance, const std::string& account, int department);

/// The whole chart: the accounts that have amounts, and the accounts and groups above them.
std::map<std::string, ChartAccount> chartOf(const FinanceFolder& finance);

}  // namespace bukorval::dati
