#include <cassert>
#include <charconv>

#include "tsql/Functions.h"
#include "tsql/Names.h"
#include "tsql/Parser.h"
#include "values/Errore.h"

namespace tsql {
namespace {

constexpr int kDeepest = 200;
/// Operators of one expression: each lies inside the next, and trees are walked by recursion.
constexpr int kMostOperators = 1000;

template <class Operator>
struct Symbol {
  std::string_view sign;
  Operator op;
};
constexpr Symbol<ComparisonOperator> kComparisons[] = {
    {"=", ComparisonOperator::Equal},           {"<>", ComparisonOperator::NotEqual},
    {"!=", ComparisonOperator::NotEqual},       {"<=", ComparisonOperator::LessOrEqual},
    {">=", ComparisonOperator::GreaterOrEqual}, {"<", ComparisonOperator::Less},
    {">", ComparisonOperator::Greater}};
constexpr Symbol<ArithmeticOperator> kSums[] = {{"+", ArithmeticOperator::Add}, {"-", ArithmeticOperator::Subtract}};
constexpr Symbol<ArithmeticOperator> kProducts[] = {
    {"*", ArithmeticOperator::Multiply}, {"/", ArithmeticOperator::Divide}, {"%", ArithmeticOperator::Modulo}};

/// The operator that a token is, if it is one of the table.
template <class Operator, std::size_t N>
std::optional<Operator> operatorOf(const Token& token, const Symbol<Operator> (&symbols)[N]) {
  if (token.kind != Token::Kind::Symbol) return std::nullopt;
  for (const auto& symbol : symbols)
    if (symbol.sign == token.text) return symbol.op;
  return std::nullopt;
}

template <class Node>
ExpressionPtr made(std::size_t offset, Node node) {
  auto expression = std::make_unique<Expression>(Expression{std::move(node)});
  expression->offset = offset;
  return expression;
}

}  // namespace

class Parser::Depth {
 public:
  explicit Depth(Parser& parser) : parser_(parser) {
    if (parser_.depth_ >= kDeepest) throw values::Errore("The text nests too deeply");
    ++parser_.depth_;
  }
  ~Depth() {
    assert(parser_.depth_ > 0);
    --parser_.depth_;
  }
  Depth(const Depth&) = delete;
  Depth& operator=(const Depth&) = delete;

 private:
  Parser& parser_;
};

/// Steps over an operator and gives its place.
std::size_t Parser::takeOperator() {
  if (++operators_ > kMostOperators) throw values::Errore("The expression has too many operators");
  return take().offset;
}

ExpressionPtr Parser::condition() {
  auto whole = expression();
  if (peek().kind != Token::Kind::End) unexpected("the end of the text");
  return whole;
}

ExpressionPtr Parser::expression() {
  const Depth depth(*this);
  if (depth_ == 1) operators_ = 0;
  auto left = conjunction();
  while (isWord("OR")) {
    const auto offset = takeOperator();
    left = made(offset, Logic{LogicOperator::Or, std::move(left), conjunction()});
  }
  return left;
}

ExpressionPtr Parser::conjunction() {
  auto left = negation();
  while (isWord("AND")) {
    const auto offset = takeOperator();
    left = made(offset, Logic{LogicOperator::And, std::move(left), negation()});
  }
  return left;
}

ExpressionPtr Parser::negation() {
  if (!isWord("NOT")) return predicate();
  const Depth depth(*this);
  const auto offset = takeOperator();
  return made(offset, Not{negation()});
}

ExpressionPtr Parser::predicate() {
  if (isWord("EXISTS")) {
    const auto offset = take().offset;
    return made(offset, Exists{parenthesisedQuery()});
  }
  return predicateTail(sum());
}

ExpressionPtr Parser::predicateTail(ExpressionPtr left) {
  if (const auto op = operatorOf(peek(), kComparisons)) {
    const auto offset = takeOperator();
    return made(offset, Comparison{*op, std::move(left), sum()});
  }
  const auto offset = peek().offset;
  if (takeWord("IS")) {
    const bool negated = takeWord("NOT");
    expectWord("NULL");
    return made(offset, IsNull{negated, std::move(left)});
  }
  const bool negated = isWord("NOT");
  if (takeOf(negated, "IN")) return in(offset, negated, std::move(left));
  if (takeOf(negated, "BETWEEN")) {
    auto from = sum();
    expectWord("AND");
    return made(offset, Between{negated, std::move(left), std::move(from), sum()});
  }
  if (takeOf(negated, "LIKE")) {
    const Token& token = peek();
    const bool prefix = token.kind == Token::Kind::Text && isPrefixPattern(scan_.literals[token.literal].text);
    auto pattern = sum();
    if (isWord("ESCAPE")) unexpected("a pattern without ESCAPE");
    return made(offset, Like{negated, std::move(left), std::move(pattern), prefix});
  }
  return left;
}

/// Takes "word", or "NOT word" where it is negated.
bool Parser::takeOf(bool negated, std::string_view word) { return negated ? takeWords({"NOT", word}) : takeWord(word); }

ExpressionPtr Parser::in(std::size_t offset, bool negated, ExpressionPtr value) {
  if (isSymbol("(") && isWord("SELECT", 1))
    return made(offset, InQuery{negated, std::move(value), parenthesisedQuery()});
  InList list{negated, std::move(value), {}};
  expectSymbol("(");
  do list.members.push_back(sum());
  while (takeSymbol(","));
  expectSymbol(")");
  return made(offset, std::move(list));
}

ExpressionPtr Parser::sum() {
  auto left = product();
  while (const auto op = operatorOf(peek(), kSums)) {
    const auto offset = takeOperator();
    left = made(offset, Arithmetic{*op, std::move(left), product()});
  }
  return left;
}

ExpressionPtr Parser::product() {
  auto left = factor();
  while (const auto op = operatorOf(peek(), kProducts)) {
    const auto offset = takeOperator();
    left = made(offset, Arithmetic{*op, std::move(left), factor()});
  }
  return left;
}

ExpressionPtr Parser::factor() {
  const bool negative = isSymbol("-");
  if (!negative && !isSymbol("+")) return primary();
  const Depth depth(*this);
  const auto offset = takeOperator();
  return made(offset, Sign{negative, factor()});
}

ExpressionPtr Parser::primary() {
  const Token& token = peek();
  switch (token.kind) {
    case Token::Kind::Number:
    case Token::Kind::Text: take(); return made(token.offset, Constant{token.literal});
    case Token::Kind::Variable:
      take();
      if (sameName(token.text, "@@IDENTITY")) return made(token.offset, LastIdentity{});
      return made(token.offset, Variable{std::string(token.text)});
    case Token::Kind::Word:
    case Token::Kind::QuotedName: return named();
    case Token::Kind::Symbol:
      if (takeSymbol("*")) return made(token.offset, Star{});
      if (isSymbol("(")) return parenthesised();
      break;
    case Token::Kind::End: break;
  }
  unexpected("an expression");
}

ExpressionPtr Parser::parenthesised() {
  const Depth depth(*this);
  if (isWord("SELECT", 1)) {
    const auto offset = peek(1).offset;
    return made(offset, ScalarQuery{parenthesisedQuery()});
  }
  expectSymbol("(");
  auto inner = expression();
  expectSymbol(")");
  return inner;
}

SelectPtr Parser::parenthesisedQuery() {
  expectSymbol("(");
  auto query = selectExpression();
  expectSymbol(")");
  return query;
}

ExpressionPtr Parser::named() {
  const auto offset = peek().offset;
  if (takeWord("NULL")) return made(offset, Null{});
  if (isWord("CASE")) return caseExpression();
  if (isWord("CAST") && isSymbol("(", 1)) return cast();
  if (isWord("CONVERT") && isSymbol("(", 1)) return convert();
  ColumnName column{{}, name("a name")};
  if (isSymbol("(")) return call(column.name);
  while (takeSymbol(".")) {
    column.qualifier = std::move(column.name);
    if (takeSymbol("*")) return made(offset, Star{std::move(column.qualifier)});
    column.name = name("a column name");
  }
  return made(offset, std::move(column));
}

ExpressionPtr Parser::call(const std::string& functionName) {
  const Depth depth(*this);
  const auto offset = peek().offset;
  Call call{functionRule(functionName).function, upperName(functionName)};
  expectSymbol("(");
  if (takeSymbol(")")) return made(offset, std::move(call));
  call.distinct = takeWord("DISTINCT");
  if (isSymbol("*") && isSymbol(")", 1)) {
    take();
    call.star = true;
  } else {
    do call.arguments.push_back(expression());
    while (takeSymbol(","));
  }
  expectSymbol(")");
  if (isWord("OVER")) unexpected("a function without OVER");
  return made(offset, std::move(call));
}

ExpressionPtr Parser::caseExpression() {
  const Depth depth(*this);
  const auto offset = peek().offset;
  Case choice;
  expectWord("CASE");
  if (!isWord("WHEN")) choice.operand = expression();
  while (takeWord("WHEN")) {
    auto& when = choice.whens.emplace_back();
    when.condition = expression();
    expectWord("THEN");
    when.result = expression();
  }
  if (choice.whens.empty()) unexpected("WHEN");
  if (takeWord("ELSE")) choice.otherwise = expression();
  expectWord("END");
  return made(offset, std::move(choice));
}

/// A text type without a length holds 30 characters in a conversion, unlike the one of a column's definition.
Type Parser::castType() {
  const std::size_t before = position_;
  Type target = type();
  constexpr std::int32_t kCharactersUnsaid = 30;
  if (target.kind == TypeKind::Text && position_ == before + 1) target.length = kCharactersUnsaid;
  return target;
}

ExpressionPtr Parser::cast() {
  const Depth depth(*this);
  const auto offset = peek().offset;
  Cast cast;
  expectWord("CAST");
  expectSymbol("(");
  cast.value = expression();
  expectWord("AS");
  cast.target = castType();
  expectSymbol(")");
  return made(offset, std::move(cast));
}

ExpressionPtr Parser::convert() {
  const Depth depth(*this);
  const auto offset = peek().offset;
  Cast cast;
  expectWord("CONVERT");
  expectSymbol("(");
  cast.target = castType();
  expectSymbol(",");
  cast.value = expression();
  if (takeSymbol(",")) {
    const std::string style = integer();
    int number = -1;
    std::from_chars(style.data(), style.data() + style.size(), number);
    cast.style = number;
  }
  expectSymbol(")");
  return made(offset, std::move(cast));
}

}  // namespace tsql
