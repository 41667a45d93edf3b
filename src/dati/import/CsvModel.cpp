#include "dati/import/CsvModel.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

#include "dati/Failure.h"
#include "dati/TypedNumber.h"
#include "dati/import/CsvReader.h"
#include "language/Language.h"
#include "values/Conversion.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace bukorval::dati {
namespace {

values::Errore unacceptable(std::string_view text, const std::string& why) {
  return values::Errore(shown(text) + " " + why);
}

values::Variant parseDecimal(std::string_view text, int integerDigits, int decimals, char decimalSign) {
  const auto number = values::Decimal::TryParse(typedNumber(text, decimalSign))->normalized();
  if (number.scale() > decimals) throw unacceptable(text, tr("has more than {} decimals", decimals));
  if (number.integerDigits() > integerDigits) throw unacceptable(text, tr("is too large"));
  return number;
}

values::Variant parseInteger(std::string_view text, int digits) {
  const bool onlyDigits = std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
  if (!onlyDigits) throw unacceptable(text, tr("is not a whole number"));
  if (text.size() > static_cast<std::size_t>(digits)) throw unacceptable(text, tr("has more than {} digits", digits));
  return std::stoll(std::string(text));
}

/// For each field of the file, its position in the model; nothing for a column the model does not know.
std::vector<std::optional<std::size_t>> mapColumns(const CsvReader& reader, const CsvModel& model,
                                                   const std::string& file, Problems& problems) {
  std::vector<std::optional<std::size_t>> positions;
  std::vector<bool> present(model.fields.size());
  if (reader.header().empty()) {
    problems.add(file, 1, tr("the file is empty: a line with the names of the columns is needed"));
    return positions;
  }
  for (const auto& name : reader.header()) {
    auto& position = positions.emplace_back();
    for (std::size_t i = 0; i < model.fields.size(); ++i) {
      if (values::compareText(model.fields[i].name, name) == 0) position = i;
    }
    if (!position) {
      problems.add(file, reader.line(), tr("unknown column {}", shown(name)));
    } else if (present[*position]) {
      problems.add(file, reader.line(), tr("column {} stands twice", shown(name)));
    } else {
      present[*position] = true;
    }
  }
  for (std::size_t i = 0; i < present.size(); ++i) {
    if (present[i] || !model.fields[i].required) continue;
    problems.add(file, reader.line(), tr("column {} is missing", shown(model.fields[i].name)));
  }
  return positions;
}

void readRow(CsvRow& row, const std::vector<std::string>& fields,
             const std::vector<std::optional<std::size_t>>& positions, const CsvModel& model, char decimalSign,
             const std::string& file, Problems& problems) {
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (!positions[i]) continue;
    const auto& field = model.fields[*positions[i]];
    try {
      row.values[*positions[i]] = parseField(fields[i], field, decimalSign);
    } catch (const values::Errore& e) {
      problems.add(file, row.line, tr("column {}: {}", field.name, e.what()));
    }
  }
}

/// Goes through the rows; whether the columns are those of the model.
bool readRows(CsvReader& reader, const CsvModel& model, const std::string& file, Problems& problems,
              const std::function<void(CsvRow&)>& visit) {
  const auto before = problems.count();
  const auto positions = mapColumns(reader, model, file, problems);
  if (problems.count() > before) return false;  // the lines cannot be told apart
  std::vector<std::string> fields;
  CsvRow row;
  while (reader.next(fields)) {
    if (fields.size() != positions.size()) {
      problems.add(file, reader.line(), wrongFieldCount(fields.size(), positions.size()));
      continue;
    }
    row.line = reader.line();
    row.values.assign(model.fields.size(), {});
    readRow(row, fields, positions, model, reader.decimalSign(), file, problems);
    visit(row);
  }
  return true;
}

}  // namespace

std::string columnList(const CsvModel& model) {
  std::string list;
  for (const auto& field : model.fields) {
    std::string item(field.name);
    if (!field.help.empty()) item.append(": ").append(field.help);
    if (!field.required) item = '[' + item + ']';
    list += (list.empty() ? "" : ", ") + item;
  }
  return list;
}

values::Variant parseField(std::string_view text, const CsvField& field, char decimalSign) {
  text = values::trim(text);
  if (text.empty()) {
    if (field.required) throw values::Errore(tr("a value is needed"));
    return {};
  }
  switch (field.type) {
    case CsvType::Integer: return parseInteger(text, field.width);
    case CsvType::Amount: return parseDecimal(text, 13, 2, decimalSign);
    case CsvType::Quantity: return parseDecimal(text, 11, 3, decimalSign);
    case CsvType::Date:
      if (const auto date = values::Date::TryParse(text)) return date->dateOnly();
      throw unacceptable(text, tr("is not a date"));
    case CsvType::Text: break;
  }
  if (values::length(text) > static_cast<std::size_t>(field.width)) {
    throw unacceptable(text, tr("has more than {} characters", field.width));
  }
  return text;
}

void checkRange(const CsvRow& row, const CsvModel& model, std::size_t field, int low, int high, const std::string& file,
                Problems& problems) {
  if (row.values[field].isEmpty()) return;
  const auto value = values::toInt64(row.values[field]);
  if (value >= low && value <= high) return;
  problems.add(file, row.line,
               tr("column {}: {} is not between {} and {}", model.fields[field].name, value, low, high));
}

std::string shown(std::string_view text) {
  constexpr std::size_t kLongest = 60;
  const auto start = values::left(text, kLongest);
  return "'" + std::string(start) + (start.size() < text.size() ? "…'" : "'");
}

std::string wrongFieldCount(std::size_t fields, std::size_t names) {
  return tr("{} fields where the header has {}", fields, names);
}

void readRecords(TextFile& text, const std::string& file, Problems& problems,
                 const std::function<void(CsvReader& reader, std::size_t lines)>& read) {
  try {
    const auto lines = text.check();
    auto blocks = text.begin();
    CsvReader reader([&](std::string& block) { return blocks.next(block); });
    read(reader, lines);
  } catch (const EncodingFault& fault) {
    problems.add(file, fault.line, fault.what(), Remedy::Encoding);
  } catch (const UnclosedQuote& fault) {
    problems.add(file, fault.line, fault.what());
  }
}

CsvFile::CsvFile(std::string file, CsvModel model, const CsvReading& reading)
    : file_(std::move(file)), model_(std::move(model)), reading_(reading), text_(file_, reading.encoding) {}

bool CsvFile::read(Problems& problems, const RowVisitor& visit) {
  bool understood = false;
  readRecords(text_, file_, problems, [&](CsvReader& reader, std::size_t lines) {
    Steps steps(reading_.progress, tr("Reading {}", file_), static_cast<std::int64_t>(lines));
    understood = readRows(reader, model_, file_, problems, [&](CsvRow& row) {
      steps.done(static_cast<std::int64_t>(row.line));
      visit(row);
    });
  });
  return understood;
}

void CsvFile::readAgain(const RowVisitor& visit) const { goAgain(Faults::Refused, visit); }

void CsvFile::lookAgain(const RowVisitor& visit) const { goAgain(Faults::Known, visit); }

void CsvFile::goAgain(Faults faults, const RowVisitor& visit) const {
  auto blocks = text_.begin();
  Problems problems;
  const auto refuseNew = [&] {
    if (faults == Faults::Refused && problems.count() > 0) refuseChange();
  };
  try {
    CsvReader reader([&](std::string& block) { return blocks.next(block); });
    readRows(reader, model_, file_, problems, [&](CsvRow& row) {
      refuseNew();
      visit(row);
    });
  } catch (const EncodingFault&) {
    refuseChange();
  } catch (const UnclosedQuote&) {
    refuseChange();
  }
  refuseNew();
  if (!text_.isAsChecked(blocks)) refuseChange();
}

void CsvFile::refuseChange() const {
  throw Refused(tr("{} has changed since it was checked, nothing was imported", file_));
}

CsvBatch readCsv(const std::string& file, const CsvModel& model, Problems& problems, const CsvReading& reading) {
  CsvBatch batch{file, {}};
  batch.understood =
      CsvFile(file, model, reading).read(problems, [&](CsvRow& row) { batch.rows.push_back(std::move(row)); });
  return batch;
}

}  // namespace bukorval::dati
