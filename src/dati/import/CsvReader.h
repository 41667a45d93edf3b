#pragma once

#include <cstddef>
#include <istream>
#include <string>
#include <vector>

#include "language/Language.h"
#include "values/Errore.h"

namespace bukorval::dati {

/// A quoted field that no quote ends.
struct UnclosedQuote : values::Errore {
  explicit UnclosedQuote(std::size_t lineOfRecord)
      : values::Errore(tr("a quoted field is never closed")), line(lineOfRecord) {}
  std::size_t line;  ///< on which the record began
};

/// Reads comma-separated text as spreadsheets write it: quoted fields with doubled quotes and line breaks
/// inside, lines ended by LF, CR LF or CR, an optional byte-order mark. A header line that holds semicolons and no
/// comma makes the semicolon the separator of the whole file, and the comma its decimal sign. Lines that hold nothing
/// are skipped.
class CsvReader {
 public:
  /// Reads the header line. Throws UnclosedQuote.
  explicit CsvReader(std::istream& in);

  /// The comma where the semicolon separates, else the point.
  char decimalSign() const { return separator_ == ';' ? ',' : '.'; }
  /// The fields of the header line, blanks trimmed.
  const std::vector<std::string>& header() const { return header_; }
  /// False at the end. Throws UnclosedQuote.
  bool next(std::vector<std::string>& fields);
  /// Number of the line (from 1) on which the last record began.
  std::size_t line() const { return recordStart_; }

 private:
  bool read(std::vector<std::string>& fields);
  /// Reads one field; the character that ended it, '\n' also at the end of the text.
  char readField(std::string& field);
  /// Whether a character that was read ends a line; takes the LF behind a CR with it.
  bool endsLine(int c);
  void readQuoted(std::string& field);

  std::istream& in_;
  char separator_ = ',';
  std::size_t currentLine_ = 1;
  std::size_t recordStart_ = 0;
  std::vector<std::string> header_;
};

}  // namespace bukorval::dati
