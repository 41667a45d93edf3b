#include "ado/filter/FilterParser.h"

#include <array>
#include <utility>

#include "ado/filter/FilterLexer.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace ado {
namespace {

using values::Date;
using values::Variant;
using TokenKind = FilterToken::Kind;

/// More parentheses than a person writes; a bound for the stack.
constexpr int kDeepest = 64;

constexpr std::array<std::pair<std::string_view, FilterOperator>, 7> kOperators{{
    {"=", FilterOperator::Equal},
    {"<>", FilterOperator::NotEqual},
    {"<", FilterOperator::Less},
    {">", FilterOperator::Greater},
    {"<=", FilterOperator::LessOrEqual},
    {">=", FilterOperator::GreaterOrEqual},
    {"LIKE", FilterOperator::Like},
}};

/// expression = conjunction { OR conjunction }; conjunction = primary { AND primary };
/// primary = ( expression ) | name operator value.
class Parser {
 public:
  Parser(std::string_view text, const FindColumn& find) : lexer_(text), find_(find), token_(lexer_.next()) {}

  FilterExpression parse() {
    auto expression = alternatives();
    if (token_.kind != TokenKind::End) fail("AND, OR or the end is expected");
    return expression;
  }

 private:
  [[noreturn]] void fail(std::string_view why) const { lexer_.fail(token_.offset, why); }
  FilterToken take() { return std::exchange(token_, lexer_.next()); }
  bool isWord(std::string_view word) const {
    return token_.kind == TokenKind::Word && values::compareText(token_.text, word) == 0;
  }
  bool isSymbol(std::string_view symbol) const { return token_.kind == TokenKind::Symbol && token_.text == symbol; }

  template <class Part>
  FilterExpression joined(FilterExpression::Join join, std::string_view word, Part part) {
    auto first = part();
    if (!isWord(word)) return first;
    std::vector<FilterExpression> parts;
    parts.push_back(std::move(first));
    while (isWord(word)) {
      take();
      parts.push_back(part());
    }
    return FilterExpression(join, std::move(parts));
  }

  FilterExpression alternatives() {
    return joined(FilterExpression::Join::Or, "OR", [this] { return conjunction(); });
  }

  FilterExpression conjunction() {
    return joined(FilterExpression::Join::And, "AND", [this] { return primary(); });
  }

  FilterExpression primary() {
    if (!isSymbol("(")) return FilterExpression(term());
    if (++depth_ > kDeepest) fail("the parentheses are nested too deeply");
    take();
    auto inner = alternatives();
    if (!isSymbol(")")) fail("a closing parenthesis is expected");
    take();
    --depth_;
    return inner;
  }

  FilterTerm term() {
    if (token_.kind != TokenKind::Word && token_.kind != TokenKind::Name) fail("the name of a field is expected");
    const FilterColumn column = find_(token_.text);
    take();
    const FilterOperator op = comparison();
    return FilterTerm(column, op, value());
  }

  FilterOperator comparison() {
    for (const auto& [text, op] : kOperators) {
      if (!isSymbol(text) && !isWord(text)) continue;
      take();
      return op;
    }
    fail("a comparison is expected");
  }

  Variant value() {
    Variant result;
    switch (token_.kind) {
      case TokenKind::Text: result = token_.text; break;
      case TokenKind::Number: result = number(); break;
      case TokenKind::Date: result = date(); break;
      case TokenKind::Word: result = word(); break;
      default: fail("a value is expected");
    }
    take();
    return result;
  }

  Variant number() const {
    if (const auto number = numberIn(token_.text)) return *number;
    fail("a number is malformed or too large");
  }

  Variant date() const {
    if (const auto date = Date::TryParse(values::trim(token_.text))) return *date;
    fail("a date is malformed");
  }

  Variant word() const {
    if (isWord("NULL")) return Variant::Null();
    if (isWord("TRUE")) return true;
    if (isWord("FALSE")) return false;
    fail("a value is expected, text between quotes");
  }

  FilterLexer lexer_;
  const FindColumn& find_;
  FilterToken token_;
  int depth_ = 0;
};

}  // namespace

FilterExpression parseFilter(std::string_view text, const FindColumn& find) { return Parser(text, find).parse(); }

}  // namespace ado
