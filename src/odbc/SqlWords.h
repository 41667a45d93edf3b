#pragma once

#include <cstddef>
#include <string_view>

namespace odbc {

/// The skeleton of a SQL Server text, one piece after the other: its plain words and its symbols. What could hide a
/// word that is none (texts in quotes, quoted names, comments) is stepped over; a text that never closes its quote or
/// comment ends there, and the database says what is wrong with it. (The lexer of tsql/ will not do: it refuses what
/// the emitters do not know, and here every text of the server's language passes.)
class SqlWords {
 public:
  explicit SqlWords(std::string_view text) : text_(text) {}

  /// False at the end of the text.
  bool next();

  enum class Kind { Word, Symbol, Other } kind = Kind::Other;  ///< Other: a number, quoted text or name
  std::string_view piece;

 private:
  void skipBlanks();
  void skipComment();
  void skipQuoted(char close);
  char peek(std::size_t ahead = 0) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }

  std::string_view text_;
  std::size_t at_ = 0;
};

}  // namespace odbc
