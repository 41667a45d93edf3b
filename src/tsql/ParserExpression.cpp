#include <algorithm>
#include <array>
#include <cctype>

#include "tsql/Names.h"
#include "tsql/Parser.h"
#include "values/Errore.h"

namespace tsql {
namespace {

constexpr int kDeepest = 200;
/// Operators of one expression: as many as the engine takes one inside the other.
constexpr int kMostOperators = 1000;
constexpr std::array<std::string_view, 7> kComparisons = {"=", "<>", "!=", "<=", ">=", "<", ">"};

}  // namespace

class Parser::Depth {
 public:
  explicit Depth(Parser& parser) : parser_(parser) {
    if (++parser_.depth_ <= kDeepest) return;
    --parser_.depth_;
    throw values::Errore("The text nests too deeply");
  }
  ~Depth() { --parser_.depth_; }
  Depth(const Depth&) = delete;
  Depth& operator=(const Depth&) = delete;

 private:
  Parser& parser_;
};

ExpressionPtr Parser::node(Expression::Kind kind) {
  const bool operation = kind == Expression::Kind::Binary || kind == Expression::Kind::Unary;
  if (operation && ++operators_ > kMostOperators) throw values::Errore("The expression has too many operators");
  auto expression = std::make_unique<Expression>();
  expression->kind = kind;
  expression->offset = peek().offset;
  return expression;
}

ExpressionPtr Parser::expression() {
  const Depth depth(*this);
  if (depth_ == 1) operators_ = 0;
  auto left = conjunction();
  while (isWord("OR")) {
    auto both = node(Expression::Kind::Binary);
    take();
    both->name = "OR";
    both->left = std::move(left);
    both->right = conjunction();
    left = std::move(both);
  }
  return left;
}

ExpressionPtr Parser::conjunction() {
  auto left = negation();
  while (isWord("AND")) {
    auto both = node(Expression::Kind::Binary);
    take();
    both->name = "AND";
    both->left = std::move(left);
    both->right = negation();
    left = std::move(both);
  }
  return left;
}

ExpressionPtr Parser::negation() {
  if (!isWord("NOT")) return predicate();
  const Depth depth(*this);
  auto negated = node(Expression::Kind::Unary);
  take();
  negated->name = "NOT";
  negated->left = negation();
  return negated;
}

ExpressionPtr Parser::predicate() {
  if (isWord("EXISTS")) {
    auto exists = node(Expression::Kind::Exists);
    take();
    expectSymbol("(");
    exists->select = selectExpression();
    expectSymbol(")");
    return exists;
  }
  return predicateTail(sum());
}

ExpressionPtr Parser::predicateTail(ExpressionPtr left) {
  const Token& token = peek();
  if (token.kind == Token::Kind::Symbol &&
      std::find(kComparisons.begin(), kComparisons.end(), token.text) != kComparisons.end()) {
    auto comparison = node(Expression::Kind::Binary);
    comparison->name = token.text == "!=" ? "<>" : std::string(token.text);
    take();
    comparison->left = std::move(left);
    comparison->right = sum();
    return comparison;
  }
  if (isWord("IS")) {
    auto test = node(Expression::Kind::IsNull);
    take();
    test->negated = takeWord("NOT");
    expectWord("NULL");
    test->left = std::move(left);
    return test;
  }
  const bool negated = isWord("NOT");
  const std::size_t ahead = negated ? 1 : 0;
  if (isWord("IN", ahead)) {
    auto in = node(Expression::Kind::In);
    position_ += ahead + 1;
    in->negated = negated;
    in->left = std::move(left);
    expectSymbol("(");
    if (isWord("SELECT")) {
      in->select = selectExpression();
    } else {
      do in->arguments.push_back(sum());
      while (takeSymbol(","));
    }
    expectSymbol(")");
    return in;
  }
  if (isWord("BETWEEN", ahead)) {
    auto between = node(Expression::Kind::Between);
    position_ += ahead + 1;
    between->negated = negated;
    between->left = std::move(left);
    between->arguments.push_back(sum());
    expectWord("AND");
    between->arguments.push_back(sum());
    return between;
  }
  if (isWord("LIKE", ahead)) {
    auto like = node(Expression::Kind::Like);
    position_ += ahead + 1;
    like->negated = negated;
    like->left = std::move(left);
    if (peek().kind == Token::Kind::Text) like->prefixPattern = isPrefixPattern(scan_.literals[peek().literal].text);
    like->arguments.push_back(sum());
    if (isWord("ESCAPE")) unexpected("a pattern without ESCAPE");
    return like;
  }
  return left;
}

ExpressionPtr Parser::sum() {
  auto left = product();
  while (isSymbol("+") || isSymbol("-")) {
    auto both = node(Expression::Kind::Binary);
    both->name = std::string(take().text);
    both->left = std::move(left);
    both->right = product();
    left = std::move(both);
  }
  return left;
}

ExpressionPtr Parser::product() {
  auto left = factor();
  while (isSymbol("*") || isSymbol("/") || isSymbol("%")) {
    auto both = node(Expression::Kind::Binary);
    both->name = std::string(take().text);
    both->left = std::move(left);
    both->right = factor();
    left = std::move(both);
  }
  return left;
}

ExpressionPtr Parser::factor() {
  if (!isSymbol("-") && !isSymbol("+")) return primary();
  const Depth depth(*this);
  auto unary = node(Expression::Kind::Unary);
  unary->name = std::string(take().text);
  unary->left = factor();
  return unary;
}

ExpressionPtr Parser::primary() {
  const Token& token = peek();
  switch (token.kind) {
    case Token::Kind::Number:
    case Token::Kind::Text: {
      auto literal = node(Expression::Kind::Literal);
      literal->literal = take().literal;
      return literal;
    }
    case Token::Kind::Variable: {
      auto variable = node(Expression::Kind::Variable);
      variable->name = std::string(take().text);
      return variable;
    }
    case Token::Kind::Word:
    case Token::Kind::QuotedName: return named();
    case Token::Kind::Symbol:
      if (isSymbol("*")) {
        auto star = node(Expression::Kind::Star);
        take();
        return star;
      }
      if (isSymbol("(")) return parenthesised();
      break;
    case Token::Kind::End: break;
  }
  unexpected("an expression");
}

ExpressionPtr Parser::parenthesised() {
  const Depth depth(*this);
  expectSymbol("(");
  if (isWord("SELECT")) {
    auto subquery = node(Expression::Kind::Subquery);
    subquery->select = selectExpression();
    expectSymbol(")");
    return subquery;
  }
  auto inner = expression();
  expectSymbol(")");
  return inner;
}

ExpressionPtr Parser::named() {
  if (isWord("NULL")) {
    auto null = node(Expression::Kind::Null);
    take();
    return null;
  }
  if (isWord("CASE")) return caseExpression();
  if (isWord("CAST") && isSymbol("(", 1)) return cast();
  if (isWord("CONVERT") && isSymbol("(", 1)) return convert();
  auto column = node(Expression::Kind::Column);
  column->name = name("a name");
  if (isSymbol("(")) return function(std::move(column->name));
  while (takeSymbol(".")) {
    column->qualifier = std::move(column->name);
    if (takeSymbol("*")) {
      column->kind = Expression::Kind::Star;
      column->name.clear();
      return column;
    }
    column->name = name("a column name");
  }
  return column;
}

ExpressionPtr Parser::function(std::string functionName) {
  const Depth depth(*this);
  auto call = node(Expression::Kind::Function);
  call->name = upperName(functionName);
  expectSymbol("(");
  if (takeSymbol(")")) return call;
  call->distinct = takeWord("DISTINCT");
  if (isSymbol("*") && isSymbol(")", 1)) {
    take();
    call->star = true;
  } else {
    do call->arguments.push_back(expression());
    while (takeSymbol(","));
  }
  expectSymbol(")");
  if (isWord("OVER")) unexpected("a function without OVER");
  return call;
}

ExpressionPtr Parser::caseExpression() {
  const Depth depth(*this);
  auto choice = node(Expression::Kind::Case);
  expectWord("CASE");
  if (!isWord("WHEN")) choice->left = expression();
  while (takeWord("WHEN")) {
    choice->arguments.push_back(expression());
    expectWord("THEN");
    choice->arguments.push_back(expression());
  }
  if (choice->arguments.empty()) unexpected("WHEN");
  if (takeWord("ELSE")) choice->right = expression();
  expectWord("END");
  return choice;
}

ExpressionPtr Parser::cast() {
  const Depth depth(*this);
  auto conversion = node(Expression::Kind::Cast);
  expectWord("CAST");
  expectSymbol("(");
  conversion->left = expression();
  expectWord("AS");
  conversion->type = type();
  expectSymbol(")");
  return conversion;
}

ExpressionPtr Parser::convert() {
  const Depth depth(*this);
  auto conversion = node(Expression::Kind::Cast);
  expectWord("CONVERT");
  expectSymbol("(");
  conversion->type = type();
  expectSymbol(",");
  conversion->left = expression();
  if (takeSymbol(",")) conversion->style = integer();
  expectSymbol(")");
  return conversion;
}

}  // namespace tsql
