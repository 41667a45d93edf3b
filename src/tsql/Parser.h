#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "tsql/Lexer.h"
#include "tsql/Statement.h"

namespace tsql {

/// Recursive descent over the tokens of one statement. What it does not know throws and quotes the place.
class Parser {
 public:
  explicit Parser(const Scan& scan) : scan_(scan) {}
  Statement statement();
  /// The whole text as one expression: a condition that somebody else's statement will hold.
  ExpressionPtr condition();

 private:
  // Tokens (Parser.cpp)
  const Token& peek(std::size_t ahead = 0) const;
  const Token& take();
  bool isWord(std::string_view word, std::size_t ahead = 0) const;
  bool isSymbol(std::string_view symbol, std::size_t ahead = 0) const;
  bool takeWord(std::string_view word);
  bool takeWords(std::initializer_list<std::string_view> words);
  bool takeSymbol(std::string_view symbol);
  void expectWord(std::string_view word);
  void expectSymbol(std::string_view symbol);
  std::string name(std::string_view what);
  std::string tableName();
  std::string integer();
  [[noreturn]] void unexpected(std::string_view expected) const;

  // Statements (ParserStatements.cpp)
  Statement body();
  Change change();
  Change insert();
  Change update();
  Change erase();
  Change conditional();
  void end();

  // Schema (ParserSchema.cpp)
  SchemaChange create();
  SchemaChange createTable();
  SchemaChange createIndex(bool unique);
  IndexFilter indexFilter();
  SchemaChange drop();
  SchemaChange alter();
  SchemaChange truncate();
  ColumnDefinition columnDefinition();
  TableConstraint constraint();
  std::vector<std::string> nameList();
  Type type();
  Type castType();
  DefaultValue defaultValue();

  // Queries (ParserQuery.cpp)
  Query query();
  SelectPtr selectExpression();
  SelectPtr selectCore();
  void selectList(Select& select);
  std::vector<Source> sources();
  Source source();
  JoinKind joinKind();
  SetOperation setOperation();
  std::string alias();
  void hints();
  std::vector<OrderItem> orderBy();

  // Expressions (ParserExpression.cpp)
  ExpressionPtr expression();
  ExpressionPtr conjunction();
  ExpressionPtr negation();
  ExpressionPtr predicate();
  ExpressionPtr predicateTail(ExpressionPtr left);
  ExpressionPtr sum();
  ExpressionPtr product();
  ExpressionPtr factor();
  ExpressionPtr primary();
  ExpressionPtr parenthesised();
  ExpressionPtr named();
  SelectPtr parenthesisedQuery();
  ExpressionPtr call(const std::string& functionName);
  ExpressionPtr caseExpression();
  ExpressionPtr cast();
  ExpressionPtr convert();
  ExpressionPtr in(std::size_t offset, bool negated, ExpressionPtr value);
  bool takeOf(bool negated, std::string_view word);
  std::size_t takeOperator();

  /// Guards the depth of nesting: a text may nest deeper than the stack.
  class Depth;

  const Scan& scan_;
  std::size_t position_ = 0;
  int depth_ = 0;      ///< of nesting
  int operators_ = 0;  ///< in the outermost expression being read
};

}  // namespace tsql
