#include "sheet/SheetFile.h"

#include <array>
#include <fstream>

#include "dati/Failure.h"
#include "dati/import/CsvModel.h"
#include "language/Language.h"
#include "sheet/WideShape.h"
#include "values/FileName.h"
#include "values/Text.h"

namespace bukorval::sheet {
namespace {

/// How files begin.
bool startsWith(const std::string& file, std::string_view signature) {
  std::array<char, 4> start{};
  std::ifstream(values::pathOf(file), std::ios::binary).read(start.data(), start.size());
  return std::string_view(start.data(), start.size()) == signature;
}

RawTable readTable(const std::string& file, const std::string& encoding, dati::Problems& problems) {
  if (startsWith(file, "\xD0\xCF\x11\xE0"))
    throw dati::Refused(
        tr("{} is a spreadsheet of the old format, or one with a password: save it as .xlsx without", file));
  return startsWith(file, "PK\x03\x04") ? readXlsx(file, kSheetColumn) : readCsvTable(file, encoding, problems);
}

/// The first line that names a sheet says which; the other ones are looked at card by card.
std::string identityOf(const RawTable& table) {
  for (const auto& row : table.rows)
    for (const auto& cell : row.cells)
      if (cell.column == 0 && cell.text != kTitlesLine && cell.text != kTotalsLine)
        return std::string(values::rtrim(cell.text));
  throw dati::Refused(tr("{} has no cards that `bukorval export` wrote", table.file));
}

}  // namespace

SheetFile readSheetFile(const std::string& file, const std::string& encoding, dati::Problems& problems) {
  SheetFile sheet;
  sheet.table = readTable(file, encoding, problems);
  if (problems.count() > 0) return sheet;
  const auto& header = sheet.table.header;
  if (header.empty() || header.front() != kSheetColumn)
    throw dati::Refused(
        tr("{} is no sheet that `bukorval export` wrote: its first column is not '{}'", file, kSheetColumn));
  sheet.identity = identityOf(sheet.table);
  const auto selection = parseIdentity(sheet.identity);
  if (!selection)
    throw dati::Refused(tr("{} is no sheet that this program wrote: it names {}", file, dati::shown(sheet.identity)));
  sheet.selection = *selection;
  for (std::size_t i = 0; i < header.size(); ++i) {
    if (header[i].empty() || sheet.names.emplace(header[i], i).second) continue;
    problems.addAt(file, 1, sheet.table.cellName(1, i), tr("column {} stands twice", dati::shown(header[i])));
  }
  return sheet;
}

}  // namespace bukorval::sheet
