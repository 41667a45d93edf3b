#pragma once

#include <map>
#include <string>

#include "dati/import/FinanceFolder.h"

/// How accounts and departments of the finance folder become codes of the suite.
///
/// Movements are selected by account and site, so a department is the last level of the account: 6020 of
/// department 3 is 60200003. Accounts 60xx make the group 60000000.
namespace bukorval::host {

/// Levels of 2, 2 and 4 digits.
inline constexpr int kStrutturaFinance = 3;

struct ContoSuite {
  std::string descrizione;
  int natura = 0;  ///< 0 balance sheet, 1 revenue, 2 cost
  bool totale = false;
};

std::string contoFinance(const std::string& conto, int reparto);
std::string contoFinance(const ImportoFinance& importo);
/// 6020 of department 3 is card 602003.
std::string schedaFinance(const std::string& conto, int reparto);
/// "Payroll Taxes - Manufacturing", at most 40 characters.
std::string descrizioneFinance(const DatiFinance& dati, const std::string& conto, int reparto);

/// The whole chart: the accounts that have amounts, and the accounts and groups above them.
std::map<std::string, ContoSuite> contiFinance(const DatiFinance& dati);

}  // namespace bukorval::host
