#pragma once

#include <cstddef>
#include <string>
#include <string_view>
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
  /// Reads the header line. The text must outlive the reader. Throws UnclosedQuote.
  explicit CsvReader(std::string_view text);

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
  void readQuoted(std::string& field);
  bool standsAt(char c) const { return position_ < text_.size() && text_[position_] == c; }

  std::string_view text_;
  std::size_t position_ = 0;
  char separator_ = ',';
  std::size_t currentLine_ = 1;
  std::size_t recordStart_ = 0;
  std::vector<std::string> header_;
};

}  // namespace bukorval::dati
