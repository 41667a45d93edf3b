#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "tsql/Catalog.h"
#include "tsql/Functions.h"

/// Expressions: a node for each kind. The parser writes what stands in the text; what is marked "resolved" is left
/// empty by it and filled in by the Resolver.
namespace tsql {

struct Select;
struct Expression;
using SelectPtr = std::unique_ptr<Select>;
using ExpressionPtr = std::unique_ptr<Expression>;

enum class LogicOperator { And, Or };
enum class ComparisonOperator { Equal, NotEqual, Less, Greater, LessOrEqual, GreaterOrEqual };
/// Concatenate is resolved: + between two texts.
enum class ArithmeticOperator { Add, Subtract, Multiply, Divide, Modulo, Concatenate };

struct Constant {
  std::size_t literal;  ///< index into Scan::literals
};

struct Null {};

/// [qualifier.]name
struct ColumnName {
  std::string qualifier, name;
  std::string relation{}, column{};  ///< resolved: alias of the relation that has it, and its name there
};

/// * or qualifier.*
struct Star {
  struct Part {
    std::string relation;
    ResultColumn column;
  };
  std::string qualifier;
  std::vector<Part> parts{};  ///< resolved
};

/// @@IDENTITY
struct LastIdentity {};

/// Any other @name or @@name.
struct Variable {
  std::string name;
};

struct Not {
  ExpressionPtr operand;
};

struct Sign {
  bool negative;
  ExpressionPtr operand;
};

struct Logic {
  LogicOperator op;
  ExpressionPtr left, right;
};

/// What the sides are compared as: see TypeRules.h.
struct Comparison {
  ComparisonOperator op;
  ExpressionPtr left, right;
};

struct Arithmetic {
  ArithmeticOperator op;
  ExpressionPtr left, right;
  Type leftType{}, rightType{};  ///< resolved: what each side becomes before it is computed with
};

struct Call {
  Function function;
  std::string name;  ///< upper case
  bool distinct = false;
  bool star = false;  ///< COUNT(*)
  std::vector<ExpressionPtr> arguments{};
  std::optional<DatePart> part{};  ///< resolved: what the first argument of DATEADD and DATEDIFF means
};

/// CAST, or CONVERT with its style.
struct Cast {
  ExpressionPtr value;
  Type target;
  std::optional<int> style{};
};

/// CASE [operand] WHEN … THEN … [ELSE …] END. Results become the type of the whole.
struct Case {
  struct When {
    ExpressionPtr condition, result;
  };
  ExpressionPtr operand;  ///< null without one
  std::vector<When> whens;
  ExpressionPtr otherwise;  ///< null without one
};

struct InList {
  bool negated;
  ExpressionPtr value;
  std::vector<ExpressionPtr> members;
};

struct InQuery {
  bool negated;
  ExpressionPtr value;
  SelectPtr query;
  Type common{};  ///< resolved: what the value and the query's column are compared as
};

struct Between {
  bool negated;
  ExpressionPtr value, from, to;
};

struct Like {
  bool negated;
  ExpressionPtr value, pattern;
  bool prefix = false;  ///< the pattern is a text, then anything (see isPrefixPattern)
};

struct IsNull {
  bool negated;
  ExpressionPtr value;
};

struct Exists {
  SelectPtr query;
};

/// A query as a value: one column.
struct ScalarQuery {
  SelectPtr query;
};

struct Expression {
  using Node = std::variant<Constant, Null, ColumnName, Star, LastIdentity, Variable, Not, Sign, Logic, Comparison,
                            Arithmetic, Call, Cast, Case, InList, InQuery, Between, Like, IsNull, Exists, ScalarQuery>;
  Node node;
  std::size_t offset = 0;  ///< where it stands in the text
  Type type{};             ///< resolved
  bool null = false;       ///< resolved: NULL whatever the rows hold

  template <class Kind>
  const Kind* as() const {
    return std::get_if<Kind>(&node);
  }
};

}  // namespace tsql
