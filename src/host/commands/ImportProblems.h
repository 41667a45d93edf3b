#pragma once

#include <string>

#include "dati/import/Problems.h"

namespace bukorval::host {

/// Throws dati::Refused with the list by file and line (the first hundred) when there is any; nothing must have been
/// written yet.
/// @param advice  stands behind the list.
void refuseProblems(const dati::Problems& problems, const std::string& advice = {});

}  // namespace bukorval::host
