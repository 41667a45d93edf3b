#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "tsql/Ast.h"
#include "tsql/Lexer.h"

namespace tsql {

using ParsedStatement = std::variant<Query, Change, SchemaChange>;

/// Recursive descent over the tokens of one statement. What it does not know throws and quotes the place.
class Parser {
 public:
  explicit Parser(const Scan& scan) : scan_(scan) {}
  ParsedStatement statement();

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
  ParsedStatement body();
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
  SchemaChange drop();
  SchemaChange alter();
  SchemaChange truncate();
  ColumnDefinition columnDefinition();
  TableConstraint constraint();
  std::vector<std::string> nameList();
  Type type();
  std::string defaultValue();

  // Queries (ParserQuery.cpp)
  Query query();
  SelectPtr selectExpression();
  SelectPtr selectCore();
  void selectList(Select& select);
  std::vector<Source> sources();
  Source source();
  std::string joinKind();
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
  ExpressionPtr function(std::string functionName);
  ExpressionPtr caseExpression();
  ExpressionPtr cast();
  ExpressionPtr convert();
  ExpressionPtr node(Expression::Kind kind);

  /// Guards the depth of nesting: a text may nest deeper than the stack.
  class Depth;

  const Scan& scan_;
  std::size_t position_ = 0;
  int depth_ = 0;
  int operators_ = 0;  ///< in the outermost expression being read
};

}  // namespace tsql
