#pragma once

#include <cstddef>
#include <istream>
#include <string>
#include <vector>

namespace bukorval::dati {

/// Reads comma-separated text as spreadsheets write it: quoted fields with doubled quotes and line breaks
/// inside, LF or CRLF, an optional byte-order mark. A header line that holds semicolons and no comma makes
/// the semicolon the separator of the whole file, and the comma its decimal sign. Lines that hold nothing are skipped.
class CsvReader {
 public:
  explicit CsvReader(std::istream& in);

  /// The comma where the semicolon separates, else the point.
  char decimalSign() const { return separator_ == ';' ? ',' : '.'; }
  /// The fields of the header line, blanks trimmed.
  const std::vector<std::string>& header() const { return header_; }
  /// False at the end. A quoted field that is never closed throws values::Errore.
  bool next(std::vector<std::string>& fields);
  /// Number of the line (from 1) on which the last record began.
  std::size_t line() const { return recordStart_; }

 private:
  bool read(std::vector<std::string>& fields);
  /// Reads one field; the character that ended it, '\n' also at the end of the text.
  char readField(std::string& field);
  void readQuoted(std::string& field);

  std::istream& in_;
  char separator_ = ',';
  std::size_t currentLine_ = 1;
  std::size_t recordStart_ = 0;
  std::vector<std::string> header_;
};

}  // namespace bukorval::dati
