#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
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
  /// Hands over the next block of a text, not empty and the first one not without its byte-order mark; false at the
  /// end.
  using Source = std::function<bool(std::string& block)>;

  /// Reads the header line. The text must outlive the reader. Throws UnclosedQuote.
  explicit CsvReader(std::string_view text) : text_(text) { readHeader(); }
  /// The same of a text that comes in blocks: only one is held. What the source throws goes through.
  explicit CsvReader(Source source) : source_(std::move(source)) { readHeader(); }

  /// The comma where the semicolon separates, else the point.
  char decimalSign() const { return separator_ == ';' ? ',' : '.'; }
  /// The fields of the header line, blanks trimmed.
  const std::vector<std::string>& header() const { return header_; }
  /// False at the end. Throws UnclosedQuote.
  bool next(std::vector<std::string>& fields);
  /// Number of the line (from 1) on which the last record began.
  std::size_t line() const { return recordStart_; }

 private:
  void readHeader();
  bool read(std::vector<std::string>& fields);
  /// Reads one field; the character that ended it, '\n' also at the end of the text.
  char readField(std::string& field);
  void readQuoted(std::string& field);
  /// Whether there is more text, with its next character at hand.
  bool hasMore() { return position_ < text_.size() || nextBlock(); }
  bool nextBlock();
  bool standsAt(char c) { return hasMore() && text_[position_] == c; }

  Source source_;
  std::string block_;
  std::string_view text_;  ///< all of it, or the block
  std::size_t position_ = 0;
  char separator_ = ',';
  std::size_t currentLine_ = 1;
  std::size_t recordStart_ = 0;
  std::vector<std::string> header_;
};

}  // namespace bukorval::dati
