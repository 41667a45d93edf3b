#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tsql {

/// A literal lifted out of a text. `text` is a number's digits or the content of a quoted text, quotes undoubled.
struct Literal {
  enum class Kind { Integer, Decimal, Float, Text } kind;
  std::string text;
  std::int16_t scale = 0;  ///< Decimal: digits after the point as written.
};

struct Token {
  enum class Kind { Word, QuotedName, Number, Text, Symbol, Variable, End } kind;
  std::string_view text;    ///< as written; views the text given to scan
  std::size_t literal = 0;  ///< Number and Text: index into Scan::literals
  std::size_t offset = 0;
};

/// A text cut into tokens, its literals lifted out.
struct Scan {
  std::string key;  ///< equal for texts that differ only in literal values: one plan serves them all
  std::vector<Token> tokens;
  std::vector<Literal> literals;
};

/// "abc%": text, then anything. The key tells such a pattern of LIKE from others.
bool isPrefixPattern(std::string_view pattern);

/// Throws values::Errore on an unclosed quote or comment, or a character the dialect does not know.
Scan scan(std::string_view text);

/// Throws values::Errore: the message, and the text from `offset` on.
[[noreturn]] void failAt(const Scan& scan, const std::string& message, std::size_t offset);

}  // namespace tsql
