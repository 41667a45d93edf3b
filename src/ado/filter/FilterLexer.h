#pragma once

#include <string>
#include <string_view>

namespace ado {

/// A piece of a filter's text.
struct FilterToken {
  enum class Kind { Name, Word, Number, Text, Date, Symbol, End } kind;
  std::string text;    ///< Name and Text without their brackets and quotes, Date without its #
  std::size_t offset;  ///< where it starts in the filter
};

/// Cuts a filter's text into tokens, one at a time.
class FilterLexer {
 public:
  explicit FilterLexer(std::string_view text) : text_(text) {}

  /// Throws Errore on an unclosed quote or bracket and on a character that filters do not know.
  FilterToken next();
  [[noreturn]] void fail(std::size_t offset, std::string_view why) const;

 private:
  FilterToken quoted();
  FilterToken enclosed(char close, FilterToken::Kind kind);
  FilterToken number();
  FilterToken word();
  FilterToken symbol();

  std::string_view text_;
  std::size_t at_ = 0;
};

}  // namespace ado
