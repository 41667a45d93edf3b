#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tsql/Catalog.h"

/// A statement as it was written, before names and types are known.
namespace tsql {

struct Select;
struct Expression;
using ExpressionPtr = std::unique_ptr<Expression>;
using SelectPtr = std::unique_ptr<Select>;

struct Expression {
  enum class Kind {
    Literal,  ///< literal
    Null,
    Column,    ///< [qualifier.]name
    Star,      ///< * or qualifier.*
    Variable,  ///< @@name
    Unary,     ///< name: - + NOT
    Binary,    ///< name: arithmetic, comparison, AND, OR
    Function,  ///< name(arguments), star for COUNT(*)
    Cast,      ///< arguments[0] as type; style for CONVERT
    Case,      ///< [operand] when then … [else]: operand in left, else in right, pairs in arguments
    In,        ///< left IN (arguments) or (select)
    Between,   ///< left BETWEEN arguments[0] AND arguments[1]
    Like,      ///< left LIKE arguments[0]
    IsNull,    ///< left IS [NOT] NULL
    Exists,    ///< select
    Subquery,  ///< select
  } kind;
  std::string name;
  std::string qualifier;
  std::size_t literal = 0;
  bool negated = false;
  bool distinct = false;
  bool star = false;
  bool prefixPattern = false;  ///< Like: the pattern's shape, part of the text's key
  Type type;                   ///< Cast
  std::string style;           ///< Cast
  ExpressionPtr left, right;
  std::vector<ExpressionPtr> arguments;
  SelectPtr select;
  std::size_t offset = 0;
};

struct SelectItem {
  ExpressionPtr value;
  std::string alias;
};

struct Source {
  std::string table;  ///< empty for a derived table
  SelectPtr select;
  std::string alias;
  std::string join;  ///< how it joins what stands before it; empty for the first, "," for a comma
  ExpressionPtr condition;
  std::size_t offset = 0;
};

struct OrderItem {
  ExpressionPtr value;
  bool descending = false;
};

/// One SELECT core; set operations chain in `next`.
struct Select {
  bool distinct = false;
  std::optional<std::size_t> top;
  std::vector<SelectItem> items;
  std::vector<Source> sources;
  ExpressionPtr where;
  std::vector<ExpressionPtr> groupBy;
  ExpressionPtr having;
  std::string setOperation;  ///< UNION, UNION ALL, EXCEPT, INTERSECT before `next`
  SelectPtr next;
  std::vector<OrderItem> orderBy;
};

struct CommonTable {
  std::string name;
  std::vector<std::string> columns;
  SelectPtr select;
};

struct Query {
  std::vector<CommonTable> with;
  SelectPtr select;
};

/// An INSERT, UPDATE or DELETE, perhaps under IF [NOT] EXISTS.
struct Change {
  enum class Kind { Insert, Update, Delete } kind = Kind::Insert;
  std::string table;
  std::vector<std::string> columns;
  std::vector<std::vector<ExpressionPtr>> rows;                    ///< Insert: VALUES
  SelectPtr select;                                                ///< Insert: SELECT
  std::vector<std::pair<std::string, ExpressionPtr>> assignments;  ///< Update
  std::vector<Source> sources;                                     ///< Update: FROM
  ExpressionPtr where;
  SelectPtr condition;   ///< IF EXISTS (select)
  bool negated = false;  ///< IF NOT EXISTS
  std::size_t offset = 0;
};

struct ColumnDefinition {
  Column column;
  bool primaryKey = false;
  bool unique = false;
  std::optional<std::string> defaultText;  ///< as SQLite reads it
};

struct TableConstraint {
  bool primaryKey = false;
  std::vector<std::string> columns;
};

struct SchemaChange {
  enum class Kind { CreateTable, CreateIndex, DropTable, DropIndex, AddColumn, Truncate } kind = Kind::CreateTable;
  std::string name;
  std::string table;
  bool ifExists = false;
  bool unique = false;
  std::vector<ColumnDefinition> columns;
  std::vector<TableConstraint> constraints;
  std::vector<std::pair<std::string, bool>> indexColumns;  ///< name, descending
};

}  // namespace tsql
