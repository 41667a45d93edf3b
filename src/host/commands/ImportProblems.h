#pragma once

#include "dati/import/Problems.h"

namespace bukorval::host {

/// Throws dati::Refused with the list by file and line (the first hundred) when there is any; nothing must have been
/// written yet.
void refuseProblems(const dati::Problems& problems);

}  // namespace bukorval::host
