#include "dati/import/CsvModel.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>

#include "dati/Failure.h"
#include "dati/import/CsvReader.h"
#include "values/Conversion.h"
#include "values/Errore.h"
#include "values/NumberText.h"
#include "values/Text.h"

namespace bukorval::dati {
namespace {

values::Errore unacceptable(std::string_view text, const std::string& why) {
  return values::Errore("'" + std::string(text) + "' " + why);
}

values::Variant parseDecimal(std::string_view text, int integerDigits, int decimals, char decimalSign) {
  const auto number = values::Decimal::TryParse(values::typedNumber(text, decimalSign))->normalized();
  if (number.scale() > decimals) throw unacceptable(text, "has more than " + std::to_string(decimals) + " decimals");
  if (number.integerDigits() > integerDigits) throw unacceptable(text, "is too large");
  return number;
}

values::Variant parseInteger(std::string_view text, int digits) {
  const bool onlyDigits = std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
  if (!onlyDigits) throw unacceptable(text, "is not a whole number");
  if (text.size() > static_cast<std::size_t>(digits))
    throw unacceptable(text, "has more than " + std::to_string(digits) + " digits");
  return std::stoll(std::string(text));
}

/// For each field of the file, its position in the model; nothing for a column the model does not know.
std::vector<std::optional<std::size_t>> mapColumns(const CsvReader& reader, const CsvModel& model,
                                                   const std::string& file, Problems& problems) {
  std::vector<std::optional<std::size_t>> positions;
  std::vector<bool> present(model.fields.size());
  for (const auto& name : reader.header()) {
    auto& position = positions.emplace_back();
    for (std::size_t i = 0; i < model.fields.size(); ++i) {
      if (values::compareText(model.fields[i].name, name) == 0) position = i;
    }
    if (!position) {
      problems.add(file, 1, "unknown column '" + name + "'");
    } else if (present[*position]) {
      problems.add(file, 1, "column '" + name + "' stands twice");
    } else {
      present[*position] = true;
    }
  }
  for (std::size_t i = 0; i < present.size(); ++i) {
    if (present[i] || !model.fields[i].required) continue;
    problems.add(file, 1, "column '" + std::string(model.fields[i].name) + "' is missing");
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
      problems.add(file, row.line, "column " + std::string(field.name) + ": " + e.what());
    }
  }
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
    if (field.required) throw values::Errore("a value is needed");
    return {};
  }
  switch (field.type) {
    case CsvType::Integer: return parseInteger(text, field.width);
    case CsvType::Amount: return parseDecimal(text, 13, 2, decimalSign);
    case CsvType::Quantity: return parseDecimal(text, 11, 3, decimalSign);
    case CsvType::Date:
      if (const auto date = values::Date::TryParse(text)) return *date;
      throw unacceptable(text, "is not a date");
    case CsvType::Text: break;
  }
  if (values::length(text) > static_cast<std::size_t>(field.width)) {
    throw unacceptable(text, "has more than " + std::to_string(field.width) + " characters");
  }
  return text;
}

CsvBatch readCsv(const std::string& file, const CsvModel& model, Problems& problems) {
  std::ifstream in(file, std::ios::binary);
  std::error_code ignored;
  if (!in || std::filesystem::is_directory(file, ignored)) throw Refused("Cannot open " + file);
  CsvBatch batch{file, {}};
  CsvReader reader(in);
  const auto before = problems.count();
  const auto positions = mapColumns(reader, model, file, problems);
  if (problems.count() > before) return batch;  // the lines cannot be told apart
  std::vector<std::string> fields;
  while (reader.next(fields)) {
    if (fields.size() != positions.size()) {
      problems.add(file, reader.line(),
                   std::to_string(fields.size()) + " fields where the header has " + std::to_string(positions.size()));
      continue;
    }
    batch.rows.push_back({reader.line(), std::vector<values::Variant>(model.fields.size())});
    readRow(batch.rows.back(), fields, positions, model, reader.decimalSign(), file, problems);
  }
  return batch;
}

}  // namespace bukorval::dati
