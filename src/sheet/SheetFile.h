#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "sheet/BudgetSheet.h"
#include "sheet/RawTable.h"

namespace bukorval::sheet {

/// A file that an export made and people changed.
struct SheetFile {
  RawTable table;
  std::string identity;                      ///< as the file has it
  SheetSelection selection;                  ///< that it names
  std::map<std::string, std::size_t> names;  ///< of the columns, with their positions
};

/// Reads a spreadsheet, or by its content a wide CSV. What is wrong with the text of a CSV goes to `problems`; then the
/// rest is not to be used. Throws dati::Refused for files that no export made.
/// @param encoding  of a CSV.
SheetFile readSheetFile(const std::string& file, const std::string& encoding, dati::Problems& problems);

struct SheetChange {
  const SheetRow* row;  ///< of the database
  std::size_t period;   ///< from 0
  values::Variant before, after;
};
/// The cells that were changed in the file. Problems are: cards and keys that are not those of the database, what is no
/// number of the measure, values that the database changed since the export, values of several details.
/// @param now  the same sheet from the database; the changes point into it.
std::vector<SheetChange> sheetChanges(const SheetFile& file, const BudgetSheet& now, dati::Problems& problems);

}  // namespace bukorval::sheet
