#include "odbc/SqlWords.h"

#include <algorithm>

namespace odbc {
namespace {

/// Letters beyond ASCII count as blanks, because some blanks are among them; a word's end is what matters here.
bool isBlank(char c) { return static_cast<unsigned char>(c) <= ' ' || static_cast<unsigned char>(c) >= 0x80; }

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isWordStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '@' || c == '#';
}

bool isWordPart(char c) { return isWordStart(c) || isDigit(c) || c == '$'; }

/// The length of the number that a text begins with. A word may follow at once: "1e5DELETE" is a number and a verb.
std::size_t numberLength(std::string_view text) {
  constexpr std::string_view kHexDigits = "0123456789abcdefABCDEF";
  if (text.starts_with("0x") || text.starts_with("0X")) {
    return std::min(text.find_first_not_of(kHexDigits, 2), text.size());
  }
  auto end = std::min(text.find_first_not_of("0123456789."), text.size());
  if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
    ++end;
    if (end < text.size() && (text[end] == '+' || text[end] == '-')) ++end;
    end = std::min(text.find_first_not_of("0123456789", end), text.size());
  }
  return end;
}

}  // namespace

bool SqlWords::next() {
  skipBlanks();
  if (at_ >= text_.size()) return false;
  const std::size_t start = at_;
  const char c = text_[at_];
  kind = Kind::Other;
  if (c == '\'' || c == '"' || c == '[') {
    skipQuoted(c == '[' ? ']' : c);
  } else if (isDigit(c)) {
    at_ += numberLength(text_.substr(at_));
  } else if (isWordStart(c)) {
    kind = Kind::Word;
    while (at_ < text_.size() && isWordPart(text_[at_])) ++at_;
  } else {
    kind = Kind::Symbol;
    ++at_;
  }
  piece = text_.substr(start, at_ - start);
  return true;
}

void SqlWords::skipBlanks() {
  for (;;) {
    while (at_ < text_.size() && isBlank(text_[at_])) ++at_;
    if (peek() == '-' && peek(1) == '-') {
      at_ = std::min(text_.find('\n', at_), text_.size());
    } else if (peek() == '/' && peek(1) == '*') {
      skipComment();
    } else {
      return;
    }
  }
}

/// Comments nest.
void SqlWords::skipComment() {
  int depth = 0;
  do {
    const auto pair = text_.substr(at_, 2);
    if (pair == "/*") ++depth;
    if (pair == "*/") --depth;
    at_ += pair == "/*" || pair == "*/" ? 2 : 1;
  } while (depth > 0 && at_ < text_.size());
}

/// The closing sign written twice stands for itself.
void SqlWords::skipQuoted(char close) {
  for (++at_; at_ < text_.size(); ++at_) {
    if (text_[at_] != close) continue;
    if (peek(1) != close) break;
    ++at_;
  }
  at_ = std::min(at_ + 1, text_.size());
}

}  // namespace odbc
