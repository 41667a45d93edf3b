#pragma once

#include <map>
#include <string>
#include <vector>

#include "dati/import/Problems.h"
#include "values/Date.h"
#include "values/Decimal.h"

namespace bukorval::host {

struct ContoFinance {
  std::string padre, descrizione, tipo;
};

enum class Scenario { Consuntivo, Budget, Previsione };

struct ImportoFinance {
  values::Date mese;  ///< the last day of the month it stands for
  int sede = 0;
  int reparto = 0;
  Scenario scenario = Scenario::Consuntivo;
  std::string conto;
  values::Decimal importo;
};

/// A folder of monthly amounts by site, department and account: amounts.csv, accounts.csv, sites.csv,
/// departments.csv.
struct DatiFinance {
  std::map<std::string, ContoFinance> conti;
  std::map<int, std::string> sedi, reparti;
  std::vector<ImportoFinance> importi;

  /// A card whose account is kept on the credit side: revenue and liabilities.
  bool eRicavo(const std::string& conto) const;
  bool haPrevisioni() const;
};

/// Reads and checks the four files; codes that amounts.csv uses and the other files lack are problems too.
/// Throws Rifiuto when the folder or a file is missing.
DatiFinance leggiFinance(const std::string& cartella, Segnalazioni& segnalazioni);

/// A day near a month end stands for its month: the first half of a month belongs to the month before.
values::Date meseDi(const values::Date& giorno);

}  // namespace bukorval::host
