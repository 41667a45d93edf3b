#pragma once

#include <string>

#include "frame/BudgetAnno.h"
#include "host/environment/Environment.h"

namespace bukorval::host {

/// "4/01@2025", or "4/01@2025/2" for a second year of that number, as a budget of the session's company. Throws
/// UsageError for another form, dati::Refused for a budget that is not defined or a year that is not there.
BudgetAnno parseBudgetName(Environment& environment, const std::string& text);

}  // namespace bukorval::host
