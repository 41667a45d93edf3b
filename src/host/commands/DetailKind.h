#pragma once

#include <string>

#include "dati/DetailNames.h"
#include "object/CLSKORVAL.h"

namespace bukorval::host {

/// A kind of detail as a command line names it.
struct DetailKind {
  BdgTipoDettaglio kind;
  std::string column;  ///< end of the columns of the period grid
};

/// "budget", "actual", "orders", "forecastN", or the number of the kind. Throws UsageError for anything else.
DetailKind parseDetailKind(const std::string& text);
/// Throws UsageError for a name that is no measure's.
const dati::Measure& parseMeasure(const std::string& text);
/// Throws dati::Refused for a kind that no grid of the selected budget shows.
void requireDetailKind(CLSKORVAL& budget, BdgTipoDettaglio kind);

}  // namespace bukorval::host
