#include "tsql/Lexer.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdint>
#include <string>

#include "tsql/Names.h"
#include "values/Errore.h"

namespace tsql {
namespace {

/// What a character may be part of. Every text that runs is cut, so that asking must cost one look.
enum CharacterClass : std::uint8_t { kBlank = 1, kWordStart = 2, kWordPart = 4 };

constexpr std::array<std::uint8_t, 256> characterClasses() {
  std::array<std::uint8_t, 256> classes{};
  for (const char c : std::string_view(" \t\n\v\f\r")) classes[static_cast<unsigned char>(c)] = kBlank;
  for (unsigned c = 0; c < classes.size(); ++c) {
    const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    if (letter || c == '_' || c == '#' || c >= 0x80) classes[c] = kWordStart | kWordPart;
    if ((c >= '0' && c <= '9') || c == '$' || c == '@') classes[c] = kWordPart;
  }
  return classes;
}
constexpr auto kClasses = characterClasses();

bool is(CharacterClass wanted, char c) { return (kClasses[static_cast<unsigned char>(c)] & wanted) != 0; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// What a word changes for the literals behind it.
enum Effect : std::uint8_t { kNone = 0, kSized = 1, kTop = 2, kOrder = 4, kStructural = 8 };

struct Keyword {
  std::string_view name;
  int effect;
};

constexpr Keyword kKeywords[] = {{"CHAR", kSized},        {"VARCHAR", kSized},    {"NCHAR", kSized},
                                 {"NVARCHAR", kSized},    {"DECIMAL", kSized},    {"NUMERIC", kSized},
                                 {"FLOAT", kSized},       {"DATETIME2", kSized},  {"IDENTITY", kSized},
                                 {"DEC", kSized},         {"TOP", kSized | kTop}, {"ORDER", kOrder},
                                 {"CREATE", kStructural}, {"ALTER", kStructural}, {"CONVERT", kStructural}};

constexpr std::uint32_t letterBit(char c) {
  const auto letter = static_cast<unsigned char>(upperAscii(c)) - 'A';
  return letter >= 0 && letter < 26 ? std::uint32_t{1} << letter : 0;
}

/// By length, the letters that keywords begin with: most words are ruled out by one look.
constexpr auto kFirstLetters = [] {
  std::array<std::uint32_t, 10> letters{};
  for (const auto& keyword : kKeywords) letters[keyword.name.size()] |= letterBit(keyword.name.front());
  return letters;
}();

int effectOf(std::string_view word) {
  if (word.size() >= kFirstLetters.size() || (kFirstLetters[word.size()] & letterBit(word.front())) == 0) return kNone;
  for (const auto& keyword : kKeywords)
    if (sameName(keyword.name, word)) return keyword.effect;
  return kNone;
}

/// Cuts one text; the key is written along the way.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : text_(text) {
    scan_.key.reserve(text.size());
    scan_.tokens.reserve(text.size() / 6 + 4);
  }

  Scan run() {
    for (skipBlanks(); position_ < text_.size(); skipBlanks()) next();
    scan_.tokens.push_back({Token::Kind::End, text_.substr(text_.size()), 0, text_.size()});
    return std::move(scan_);
  }

 private:
  [[noreturn]] void fail(const std::string& what, std::size_t at) const {
    throw values::Errore("Incorrect syntax: " + what + " at '" + std::string(text_.substr(at, 40)) + "'");
  }

  char peek(std::size_t ahead = 0) const { return position_ + ahead < text_.size() ? text_[position_ + ahead] : '\0'; }

  void skipBlanks() {
    for (;;) {
      while (position_ < text_.size() && is(kBlank, text_[position_])) ++position_;
      if (peek() == '-' && peek(1) == '-') {
        const auto end = text_.find('\n', position_);
        position_ = end == std::string_view::npos ? text_.size() : end + 1;
      } else if (peek() == '/' && peek(1) == '*') {
        skipComment();
      } else {
        return;
      }
    }
  }

  void skipComment() {
    const std::size_t start = position_;
    int depth = 0;
    do {
      if (position_ + 1 >= text_.size()) fail("unclosed comment", start);
      if (peek() == '/' && peek(1) == '*') {
        ++depth;
        position_ += 2;
      } else if (peek() == '*' && peek(1) == '/') {
        --depth;
        position_ += 2;
      } else {
        ++position_;
      }
    } while (depth > 0);
  }

  void next() {
    const char c = peek();
    if ((c == 'N' || c == 'n') && peek(1) == '\'') {
      ++position_;
      return quotedText();
    }
    if (c == '\'') return quotedText();
    if (c == '[') return quotedName(']');
    if (c == '"') return quotedName('"');
    if (c == '@') return variable();
    if (isDigit(c) || (c == '.' && isDigit(peek(1)))) return number();
    if (is(kWordStart, c)) return word();
    symbol();
  }

  void push(Token::Kind kind, std::size_t start, std::size_t literal = 0) {
    scan_.tokens.push_back({kind, text_.substr(start, position_ - start), literal, start});
  }

  void keyUpper(std::string_view part) {
    auto& key = scan_.key;
    const auto end = key.size();
    key.resize(end + 1 + part.size(), ' ');
    std::transform(part.begin(), part.end(), key.begin() + static_cast<std::ptrdiff_t>(end) + 1, upperAscii);
  }

  void word() {
    const std::size_t start = position_;
    while (position_ < text_.size() && is(kWordPart, text_[position_])) ++position_;
    push(Token::Kind::Word, start);
    const auto text = scan_.tokens.back().text;
    keyUpper(text);
    const int effect = effectOf(text);
    structural_ = structural_ || (effect & kStructural) != 0;
    order_ = order_ || (effect & kOrder) != 0;
    afterSizedType_ = (effect & kSized) != 0;
    afterTop_ = (effect & kTop) != 0;
  }

  void variable() {
    const std::size_t start = position_;
    while (peek() == '@') ++position_;
    while (position_ < text_.size() && is(kWordPart, text_[position_])) ++position_;
    push(Token::Kind::Variable, start);
    keyUpper(scan_.tokens.back().text);
  }

  void quotedName(char close) {
    const std::size_t start = position_++;
    const auto end = text_.find(close, position_);
    if (end == std::string_view::npos || end == position_) fail("unclosed name", start);
    position_ = end + 1;
    push(Token::Kind::QuotedName, start);
    scan_.tokens.back().text = text_.substr(start + 1, end - start - 1);
    keyUpper("[");
    keyUpper(scan_.tokens.back().text);
  }

  void quotedText() {
    const std::size_t start = position_++;
    Literal literal{Literal::Kind::Text, {}, 0};
    for (;;) {
      const auto end = text_.find('\'', position_);
      if (end == std::string_view::npos) fail("unclosed quotation mark", start);
      literal.text.append(text_.substr(position_, end - position_));
      position_ = end + 1;
      if (peek() != '\'') break;
      literal.text += '\'';
      ++position_;
    }
    const bool like = !scan_.tokens.empty() && sameName(scan_.tokens.back().text, "LIKE");
    if (structural_) {
      scan_.key.append(" '").append(std::to_string(literal.text.size())).append(":").append(literal.text);
    } else if (like) {
      scan_.key += isPrefixPattern(literal.text) ? " ?p" : " ?l";
    } else {
      scan_.key += " ?s";
    }
    addLiteral(start, std::move(literal));
  }

  void number() {
    const std::size_t start = position_;
    auto kind = Literal::Kind::Integer;
    std::size_t scale = 0;
    while (isDigit(peek())) ++position_;
    if (peek() == '.') {
      kind = Literal::Kind::Decimal;
      const std::size_t point = ++position_;
      while (isDigit(peek())) ++position_;
      scale = position_ - point;
    }
    if (peek() == 'e' || peek() == 'E') {
      const std::size_t sign = peek(1) == '+' || peek(1) == '-' ? 2 : 1;
      if (isDigit(peek(sign))) {
        kind = Literal::Kind::Float;
        position_ += sign;
        while (isDigit(peek())) ++position_;
      }
    }
    if (is(kWordStart, peek())) fail("a number that runs into a name", start);
    Literal literal{kind, std::string(text_.substr(start, position_ - start)), static_cast<std::int16_t>(scale)};
    if (structural_ || sized_ || afterTop_ || orderPosition()) {
      scan_.key.append(" ").append(literal.text);
    } else {
      scan_.key += kind == Literal::Kind::Integer ? " ?i" : kind == Literal::Kind::Float ? " ?f" : " ?d";
      if (kind == Literal::Kind::Decimal) scan_.key += std::to_string(scale);
      // Long digits are of another type, and a divisor's digits decide the scale of the quotient.
      if (literal.text.size() > 9) scan_.key += literal.text.size() > 18 ? 'M' : 'L';
      if (!scan_.tokens.empty() && scan_.tokens.back().text == "/") scan_.key += std::to_string(literal.text.size());
    }
    afterTop_ = false;
    addLiteral(start, std::move(literal));
  }

  bool orderPosition() const {
    if (!order_ || scan_.tokens.empty()) return false;
    const auto previous = scan_.tokens.back().text;
    return sameName(previous, "BY") || previous == ",";
  }

  void addLiteral(std::size_t start, Literal literal) {
    const bool text = literal.kind == Literal::Kind::Text;
    push(text ? Token::Kind::Text : Token::Kind::Number, start, scan_.literals.size());
    scan_.literals.push_back(std::move(literal));
  }

  void symbol() {
    static constexpr std::array<std::string_view, 5> kPairs = {"<>", "<=", ">=", "!=", "||"};
    static constexpr std::string_view kSingles = "()+-*/%,.;=<>";
    const std::size_t start = position_;
    const auto pair = text_.substr(position_, 2);
    if (std::find(kPairs.begin(), kPairs.end(), pair) != kPairs.end() && pair != "||") {
      position_ += 2;
    } else if (kSingles.find(peek()) != std::string_view::npos) {
      ++position_;
    } else {
      fail("a character that the dialect does not know", start);
    }
    push(Token::Kind::Symbol, start);
    const auto text = scan_.tokens.back().text;
    scan_.key.append(" ").append(text);
    if (text == "(") {
      sized_ = sized_ || afterSizedType_;
    } else if (text == ")") {
      sized_ = false;
      order_ = false;
    }
    afterSizedType_ = false;
    if (text != "(") afterTop_ = false;
  }

  std::string_view text_;
  std::size_t position_ = 0;
  Scan scan_;
  bool structural_ = false;      ///< what is read decides the translation: numbers stay in the key
  bool sized_ = false;           ///< inside the parentheses of a type
  bool afterSizedType_ = false;  ///< the last word may take a size
  bool afterTop_ = false;
  bool order_ = false;
};

}  // namespace

bool isPrefixPattern(std::string_view pattern) {
  const auto wild = pattern.find_first_of("%_[");
  return wild != 0 && wild != std::string_view::npos && pattern[wild] == '%' && wild + 1 == pattern.size();
}

Scan scan(std::string_view text) { return Scanner(text).run(); }

void failAt(const Scan& scan, const std::string& message, std::size_t offset) {
  const auto& end = scan.tokens.back();
  assert(end.kind == Token::Kind::End && offset <= end.offset);
  const std::string_view text(end.text.data() - end.offset, end.offset);
  throw values::Errore(message + " near '" + std::string(text.substr(offset, 60)) + "'");
}

}  // namespace tsql
