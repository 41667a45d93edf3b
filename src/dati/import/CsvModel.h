#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "dati/import/Encoding.h"
#include "dati/import/ImportProgress.h"
#include "dati/import/Problems.h"
#include "values/Variant.h"

namespace bukorval::dati {

enum class CsvType {
  Text,      ///< up to `width` characters
  Integer,   ///< 0 or more, up to `width` digits
  Date,      ///< dd/mm/yyyy, yyyy-mm-dd or yyyymmdd
  Amount,    ///< up to 13 digits and 2 decimals, point or comma
  Quantity,  ///< up to 11 digits and 3 decimals
};

struct CsvField {
  std::string_view name;  ///< as the header line spells it, without regard to case
  CsvType type;
  bool required;
  int width;              ///< for Text and Integer
  std::string_view help;  ///< what the name does not say, for the list of columns
};

/// A kind of file that can be imported.
struct CsvModel {
  std::string_view name;
  std::vector<CsvField> fields;
};

/// "code, description, [nature: balance, revenue or cost]": optional columns in brackets.
std::string columnList(const CsvModel& model);

struct CsvRow {
  std::size_t line;
  std::vector<values::Variant> values;  ///< by the position of the field in the model; Empty where the file has none
};

struct CsvBatch {
  std::string file;
  std::vector<CsvRow> rows;
  bool understood = false;  ///< text with the columns that are needed: the rows are those of the file
};

/// How a file is read.
struct CsvReading {
  std::string encoding{encodings().front()};  ///< one of encodings()
  ImportProgress* progress = nullptr;         ///< told of the lines, if anybody asks
};

/// Reads and checks a whole file. What is wrong (another encoding, unknown or missing columns, bad dates, bad amounts,
/// texts too long) goes to `problems` with its line number. Throws Refused when the file cannot be opened.
CsvBatch readCsv(const std::string& file, const CsvModel& model, Problems& problems, const CsvReading& reading = {});

/// Hands over the text of a file. What is wrong with it (another encoding, a quote that is never closed) goes to
/// `problems`. Throws Refused when the file cannot be opened.
void readText(const std::string& file, std::string_view encoding, Problems& problems,
              const std::function<void(const std::string& text)>& read);
/// What is wrong with a line that has as many fields.
std::string wrongFieldCount(std::size_t fields, std::size_t names);

/// Adds a problem for a whole number that is not in a range; a field without a value is none.
void checkRange(const CsvRow& row, const CsvModel& model, std::size_t field, int low, int high, const std::string& file,
                Problems& problems);

/// A text of a file as a message shows it: in quotes, cut where it is long.
std::string shown(std::string_view text);

/// One field; throws values::Errore with a text that follows "column NAME: ".
values::Variant parseField(std::string_view text, const CsvField& field, char decimalSign);

}  // namespace bukorval::dati
