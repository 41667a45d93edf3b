#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "tsql/Catalog.h"
#include "tsql/Expression.h"

/// Statements as they were written; what is marked "resolved" is filled in by the Resolver.
namespace tsql {

enum class JoinKind { None, Comma, Inner, Cross, Left, Right, Full };
enum class SetOperation { None, Union, UnionAll, Except, Intersect };

struct CommonTable;

struct SelectItem {
  ExpressionPtr value;
  std::string alias;
};

struct Source {
  std::string table;  ///< empty for a derived table
  SelectPtr select;
  std::string alias;
  JoinKind join = JoinKind::None;  ///< how it joins what stands before it; None for the first
  ExpressionPtr condition;
  std::size_t offset = 0;
  // Resolved: one of the two, unless it is a derived table.
  const Table* catalogTable = nullptr;
  const CommonTable* commonTable = nullptr;

  /// The name that its columns are qualified by.
  const std::string& shownName() const { return alias.empty() ? table : alias; }
};

struct OrderItem {
  ExpressionPtr value;
  bool descending = false;
  std::optional<std::size_t> column{};  ///< resolved: the column of the result that a position or an alias stands for
};

/// One SELECT core; set operations chain in `next`.
struct Select {
  bool distinct = false;
  std::optional<std::size_t> top;  ///< index into Scan::literals
  std::vector<SelectItem> items;
  std::vector<Source> sources;
  ExpressionPtr where;
  std::vector<ExpressionPtr> groupBy;
  ExpressionPtr having;
  SetOperation setOperation = SetOperation::None;  ///< before `next`
  SelectPtr next;
  std::vector<OrderItem> orderBy;
  /// Resolved: what it gives. At the head of a chain the types are those that the whole chain meets in.
  std::vector<ResultColumn> columns;
};

struct CommonTable {
  std::string name;
  std::vector<std::string> columnNames;  ///< empty when the query's own names count
  SelectPtr select;
  // Resolved.
  bool recursive = false;  ///< reads itself
  std::vector<ResultColumn> columns;
};

struct Query {
  std::vector<CommonTable> with;
  SelectPtr select;
};

/// An INSERT, UPDATE or DELETE, perhaps under IF [NOT] EXISTS.
struct Change {
  enum class Kind { Insert, Update, Delete } kind = Kind::Insert;
  struct Assignment {
    std::string column;
    ExpressionPtr value;
    const Column* target = nullptr;  ///< resolved
  };
  std::string table;
  std::vector<std::string> columns;              ///< Insert
  std::vector<std::vector<ExpressionPtr>> rows;  ///< Insert: VALUES
  SelectPtr select;                              ///< Insert: SELECT
  std::vector<Assignment> assignments;           ///< Update
  std::vector<Source> sources;                   ///< Update: FROM
  ExpressionPtr where;
  SelectPtr condition;   ///< IF EXISTS (select)
  bool negated = false;  ///< IF NOT EXISTS
  std::size_t offset = 0;
  // Resolved.
  const Table* target = nullptr;
  std::vector<const Column*> targets;  ///< Insert: the columns written, named or not
};

struct DefaultValue {
  enum class Kind { Null, Integer, Text } kind = Kind::Null;
  std::string text{};  ///< digits with a sign, or the content of the text
};

struct ColumnDefinition {
  Column column;
  bool primaryKey = false;
  bool unique = false;
  std::optional<DefaultValue> defaultValue;
};

struct TableConstraint {
  bool primaryKey = false;  ///< otherwise unique
  std::vector<std::string> columns;
};

struct IndexColumn {
  std::string name;
  bool descending = false;
};

/// A condition of a filtered index: a column beside a whole number.
struct IndexFilter {
  std::string column;
  std::string_view comparison;  ///< "=", "<>", "<", "<=", ">", ">="
  std::string number;           ///< digits with a sign
};

struct SchemaChange {
  enum class Kind { CreateTable, CreateIndex, DropTable, DropIndex, AddColumn, Truncate } kind = Kind::CreateTable;
  std::string name;   ///< of the table or index that is made or dropped
  std::string table;  ///< that is changed or indexed
  bool ifExists = false;
  bool unique = false;
  std::vector<ColumnDefinition> columns;
  std::vector<TableConstraint> constraints;
  std::vector<IndexColumn> indexColumns;
  std::vector<std::string> includedColumns;
  std::vector<IndexFilter> indexFilters;  ///< that all hold for the rows in the index
};

using Statement = std::variant<Query, Change, SchemaChange>;

}  // namespace tsql
