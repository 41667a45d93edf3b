#pragma once

#include <string>
#include <vector>

#include "ado/connection/Connection.h"
#include "dati/Failure.h"
#include "dati/import/FinanceFolder.h"
#include "dati/import/ImportProgress.h"
#include "language/Language.h"
#include "object/CLSKORVAL.h"
#include "suite/ActiveInterface.h"

namespace bukorval::dati {

/// A finance folder wants a company of its own.
struct CompanyNotEmpty : Refused {
  CompanyNotEmpty() : Refused(tr("The company has accounts, movements or budgets already: create a new one")) {}
};

/// Writes a finance folder that was read without problems into a company that has no accounts, movements or budgets
/// (else CompanyNotEmpty), in one transaction: chart, sites, years, movements, and cards of budget type 4 through the
/// object, whose selection it changes.
/// @param progress  told of the long steps, if anybody asks.
/// @return what was written, in words: "12 accounts".
std::vector<std::string> importFinance(CLSKORVAL& budget, ado::Connection& connection,
                                       const suite::ActiveInterface& session, const FinanceFolder& finance,
                                       ImportProgress* progress = nullptr);

}  // namespace bukorval::dati
