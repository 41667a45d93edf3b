#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tsql/Translation.h"

namespace ado::sqlite::dialect {

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

/// Throws values::Errore on an unclosed quote or comment, or a character the dialect does not know.
Scan scan(std::string_view text);

}  // namespace ado::sqlite::dialect
