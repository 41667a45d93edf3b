#pragma once

#include <string>

#include "dati/import/Problems.h"
#include "host/environment/Environment.h"

namespace bukorval::host {

struct SheetToImport {
  std::string file, encoding;
  bool dryRun = false;
};

/// Writes what was changed in an exported sheet in one transaction and shows it cell by cell; a dry run only shows it.
/// @param remedies  tells options by which a file may be imported after all.
void importSheet(Environment& environment, const SheetToImport& sheet,
                 std::string (*remedies)(const dati::Problems& problems));

}  // namespace bukorval::host
