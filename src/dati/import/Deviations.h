#pragma once

#include <string>

#include "host/Environment.h"

namespace bukorval::host {

/// The columns of a file of deviations, for the help text.
std::string colonneScostamenti();

/// Reads a CSV file of deviations into RstScostPerConto and RstScostPerPeriodo, and sets TipoScostamento to them. A
/// line without a period is the account's own percentage. Throws when a line cannot be read; nothing is then set.
void leggiScostamenti(Ambiente& ambiente, const std::string& file);

}  // namespace bukorval::host
