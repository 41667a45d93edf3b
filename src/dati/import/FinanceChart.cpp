#include "dati/import/FinanceChart.h"

#include <algorithm>
#include <set>

#include "values/Text.h"

namespace bukorval::dati {
namespace {

constexpr std::size_t kAccountWidth = 4;
constexpr std::size_t kLongestDescription = 40;

std::string withZeros(const std::string& code, std::size_t width) {
  return std::string(width - std::min(width, code.size()), '0') + code;
}

int natureOf(const FinanceFolder& finance, const std::string& account) {
  const auto& type = finance.accounts.at(account).type;
  if (type == "Revenue") return 1;
  return type == "Expenditures" ? 2 : 0;
}

/// A group is called like its only account, else like the parent of its first one.
std::string nameOfGroup(const FinanceFolder& finance, const std::set<std::string>& accounts) {
  const auto& first = finance.accounts.at(*accounts.begin());
  const auto parent = finance.accounts.find(first.parent);
  return accounts.size() == 1 || parent == finance.accounts.end() ? first.description : parent->second.description;
}

}  // namespace

std::string accountCode(const std::string& account, int department) {
  return withZeros(account, kAccountWidth) + withZeros(std::to_string(department), kAccountWidth);
}

std::string cardCode(const std::string& account, int department) {
  return withZeros(account, kAccountWidth) + withZeros(std::to_string(department), 2);
}

std::string accountDescription(const FinanceFolder& finance, const std::string& account, int department) {
  const auto name = finance.accounts.at(account).description + " - " + finance.departments.at(department);
  return std::string(values::rtrim(values::left(name, kLongestDescription)));
}

std::map<std::string, ChartAccount> chartOf(const FinanceFolder& finance) {
  std::map<std::string, ChartAccount> chart;
  std::map<std::string, std::set<std::string>> groups;
  for (const auto& amount : finance.amounts) {
    const auto& account = amount.account;
    const int nature = natureOf(finance, account);
    chart[accountCode(amount)] = {accountDescription(finance, account, amount.department), nature, false};
    chart[accountCode(account, 0)] = {finance.accounts.at(account).description, nature, true};
    groups[withZeros(account, kAccountWidth).substr(0, 2)].insert(account);
  }
  // 6000 and the group of the accounts 60xx share the code 60000000, which then is the group's.
  for (const auto& [group, accounts] : groups)
    chart[accountCode(group + "00", 0)] = {nameOfGroup(finance, accounts), natureOf(finance, *accounts.begin()), true};
  return chart;
}

}  // namespace bukorval::dati
