
#include "dati/import/CsvModel.h"
#include "dati/import/CsvReader.h"
#include "sheet/RawTable.h"
#include "values/Text.h"

namespace bukorval::sheet {
namespace {

void readLines(dati::CsvReader& reader, RawTable& table, dati::Problems& problems) {
  std::vector<std::string> fields;
  while (reader.next(fields)) {
    if (fields.size() != table.header.size()) {
      problems.add(table.file, reader.line(), dati::wrongFieldCount(fields.size(), table.header.size()));
      continue;
    }
    auto& row = table.rows.emplace_back(RawRow{reader.line(), {}});
    for (std::size_t i = 0; i < fields.size(); ++i)
      if (!values::trim(fields[i]).empty()) row.cells.push_back({i, RawKind::Text, std::move(fields[i])});
  }
}

}  // namespace

RawTable readCsvTable(const std::string& file, const std::string& encoding, dati::Problems& problems) {
  RawTable table;
  table.file = file;
  dati::TextFile text(file, encoding);
  dati::readRecords(text, file, problems, [&](dati::CsvReader& reader, std::size_t) {
    table.decimalSign = reader.decimalSign();
    table.header = reader.header();
    readLines(reader, table, problems);
  });
  return table;
}

}  // namespace bukorval::sheet
