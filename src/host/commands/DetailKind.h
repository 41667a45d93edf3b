#pragma once

#include <string>

#include "frame/Enumerazioni.h"

namespace bukorval::host {

/// A kind of detail as a command line names it.
struct DetailKind {
  BdgTipoDettaglio kind;
  std::string column;  ///< end of the columns of the period grid
};

/// "budget", "actual", "orders", "forecastN", or the number of the kind. Throws UsageError for anything else.
DetailKind parseDetailKind(const std::string& text);

}  // namespace bukorval::host
