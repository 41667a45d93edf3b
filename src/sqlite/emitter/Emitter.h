#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "sqlite/emitter/Piece.h"
#include "tsql/Ast.h"
#include "tsql/Lexer.h"

namespace sqlite {

/// A table, stage or derived table as a FROM clause shows it.
struct Relation {
  std::string alias;
  std::vector<ResultColumn> columns;
};

/// The relations that an expression may name, and those of the query around it.
struct Scope {
  std::vector<Relation> relations;
  const Scope* outer = nullptr;
};

/// A common table expression that statements may read.
struct NamedQuery {
  std::string sqlName;
  std::vector<ResultColumn> columns;
  const CommonTable* recursive = nullptr;  ///< written into each statement that reads it
};

/// Writes one SQLite statement after another from parsed pieces, resolving names and types.
class Emitter {
 public:
  Emitter(const Scan& scan, const Catalog& catalog) : scan_(scan), catalog_(catalog) {}

  std::map<std::string, NamedQuery> named;  ///< by upper-case name

  struct Rows {
    std::string sql;
    std::vector<ResultColumn> columns;
  };
  /// A select in SQLite's words; `targets` asks for the columns in given types.
  Rows select(const Select& select, const Scope* outer, const std::vector<Type>* targets = nullptr);
  /// Adds the recursive queries that the statement reads in front of it.
  std::string withRecursive(const std::string& body);
  /// Emission of a recursive query's columns, before anything reads it.
  std::vector<ResultColumn> recursiveColumns(const CommonTable& table);

  std::optional<std::size_t> keyColumn(const Select& select, const std::vector<ResultColumn>& columns) const;

  std::string insert(const Change& change);
  std::string update(const Change& change);
  std::string erase(const Change& change);

  /// Ends the statement: its text with the bindings of the parameters it uses.
  StepText finish(std::string sql);

 private:
  // Names (EmitterScope.cpp)
  Relation relation(const Source& source, const Scope* outer, std::string& sql);
  const Table& table(std::string_view name) const;
  Piece column(const Expression& e, const Scope& scope) const;
  std::vector<ResultColumn> rename(std::vector<ResultColumn> columns, const CommonTable& table) const;

  // Selects (EmitterSelect.cpp)
  Rows core(const Select& select, const Scope* outer, const std::vector<Type>* targets,
            const std::vector<OrderItem>* orderBy);
  std::string from(const std::vector<Source>& sources, const std::vector<bool>& dropped, Scope& scope, bool stageFirst);
  bool readsStageFirst(const Select& select) const;
  std::vector<bool> droppedJoins(const Select& select, const std::vector<OrderItem>* orderBy) const;
  std::vector<Piece> items(const Select& select, const Scope& scope, std::vector<ResultColumn>& columns);
  std::string order(const std::vector<OrderItem>& orderBy, const std::vector<ResultColumn>& columns,
                    const Scope& scope);

  // Expressions (EmitterExpression.cpp)
  Piece expression(const Expression& e, const Scope& scope);
  std::string predicate(const Expression& e, const Scope& scope);
  Piece unary(const Expression& e, const Scope& scope);
  Piece binary(const Expression& e, const Scope& scope);
  Piece concatenation(Piece a, Piece b);
  Piece arithmetic(char op, Piece a, Piece b);
  Piece choice(const Expression& e, const Scope& scope);
  Piece in(const Expression& e, const Scope& scope);
  Piece like(const Expression& e, const Scope& scope);
  Piece subquery(const Expression& e, const Scope& scope);
  std::string comparison(std::string_view op, const Piece& a, const Piece& b);
  std::string literalComparison(std::string_view op, const Piece& value, const Piece& literal);

  // Functions (EmitterFunction.cpp)
  Piece function(const Expression& e, const Scope& scope);
  Piece aggregate(const Expression& e, const Scope& scope);
  Piece cast(const Expression& e, const Scope& scope);
  Piece dateFunction(const Expression& e, const Scope& scope);

  // Conversions (EmitterConversion.cpp)
  Type literalType(std::size_t literal) const;
  std::string bind(Binding binding);
  /// Words for a piece in its own type.
  std::string value(const Piece& piece);
  Piece valued(Piece piece);
  /// Words for a piece as `target` stores it.
  std::string converted(const Piece& piece, const Type& target);
  std::string assigned(const Piece& piece, const Column& column);

  std::string guard(const Change& change, const Scope& scope);
  [[noreturn]] void fail(const std::string& message, std::size_t offset) const;

  const Scan& scan_;
  const Catalog& catalog_;
  std::vector<Binding> bindings_;
  std::set<std::string> used_;  ///< named queries that the statement reads
};

Type booleanType();

}  // namespace sqlite
