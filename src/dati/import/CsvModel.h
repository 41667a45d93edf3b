#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "dati/import/CsvReader.h"
#include "dati/import/Encoding.h"
#include "dati/import/ImportProgress.h"
#include "dati/import/Problems.h"
#include "dati/import/TextFile.h"
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
  std::size_t line = 0;
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

/// A file that is gone through row by row, so that it is never held whole.
class CsvFile {
 public:
  /// A row may be taken away: the next one is made anew.
  using RowVisitor = std::function<void(CsvRow& row)>;

  /// Throws Refused when the file cannot be opened.
  CsvFile(std::string file, CsvModel model, const CsvReading& reading);

  const std::string& name() const { return file_; }
  const CsvModel& model() const { return model_; }
  /// Visits the rows and checks them: what is wrong goes to the problems, of an encoding before any row is visited.
  /// @return whether the file was understood: text with the columns that are needed.
  bool read(Problems& problems, const RowVisitor& visit);
  /// Visits the rows of a file that had no problems once more. Throws Refused when it is no longer the same, at the
  /// latest behind the last row.
  void readAgain(const RowVisitor& visit) const;
  /// The same for a file that was understood but may have problems, which are not told again.
  void lookAgain(const RowVisitor& visit) const;
  [[noreturn]] void refuseChange() const;

 private:
  enum class Faults { Refused, Known };
  void goAgain(Faults faults, const RowVisitor& visit) const;

  std::string file_;
  CsvModel model_;
  CsvReading reading_;
  TextFile text_;
};

/// Hands over the records of a file and how many lines it has. What is wrong with its text (another encoding, a quote
/// that is never closed) goes to the problems.
void readRecords(TextFile& text, const std::string& file, Problems& problems,
                 const std::function<void(CsvReader& reader, std::size_t lines)>& read);
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
