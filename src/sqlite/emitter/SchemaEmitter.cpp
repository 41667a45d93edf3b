#include "sqlite/emitter/SchemaEmitter.h"

#include "sqlite/emitter/Piece.h"
#include "sqlite/storage/StoredType.h"
#include "tsql/Names.h"
#include "values/Errore.h"

namespace sqlite {
using namespace tsql;
namespace {

std::string names(const std::vector<std::string>& columns) {
  std::string sql;
  for (const auto& column : columns) sql += (sql.empty() ? "" : ", ") + quotedName(column);
  return sql;
}

/// A default as the column stores it.
std::string defaultOf(const ColumnDefinition& definition) {
  const Type& type = definition.column.type;
  std::string value = *definition.defaultText;
  if (type.kind == TypeKind::Decimal && type.scale > 0 && value != "NULL" && value != "0")
    value += std::string(static_cast<std::size_t>(type.scale), '0');
  if (type.kind == TypeKind::DateTime && value != "NULL")
    throw values::Errore("A default of the date column '" + definition.column.name + "' is not supported");
  if (type.kind == TypeKind::Text && type.fixed && value.size() >= 2 && value.front() == '\'') {
    value.pop_back();
    const auto given = static_cast<int>(value.size()) - 1;
    if (given < type.length) value.append(static_cast<std::size_t>(type.length - given), ' ');
    value += '\'';
  }
  return value;
}

std::string columnText(const ColumnDefinition& definition, bool identityKey) {
  const Type& type = definition.column.type;
  std::string sql = quotedName(definition.column.name) + " ";
  if (definition.column.identity) {
    if (!identityKey)
      throw values::Errore("The identity column '" + definition.column.name + "' must be the table's primary key");
    return sql + "INTEGER " + identityConstraint(type);
  }
  sql += declaredType(type);
  if (type.kind == TypeKind::Text) sql += " COLLATE BK_TEXT";
  if (!type.nullable) sql += " NOT NULL";
  if (definition.defaultText) sql += " DEFAULT " + defaultOf(definition);
  if (definition.primaryKey) sql += " PRIMARY KEY";
  if (definition.unique) sql += " UNIQUE";
  return sql;
}

/// The table's key is its identity column: then SQLite's row number serves as both.
bool isIdentityKey(const SchemaChange& change, const Column& column) {
  for (const auto& constraint : change.constraints)
    if (constraint.primaryKey) return constraint.columns.size() == 1 && sameName(constraint.columns[0], column.name);
  return true;
}

std::string createTable(const SchemaChange& change) {
  std::string sql = "CREATE TABLE " + quotedName(change.name) + " (";
  bool identity = false;
  bool first = true;
  for (const auto& definition : change.columns) {
    sql += (first ? "" : ", ") + columnText(definition, isIdentityKey(change, definition.column));
    identity = identity || definition.column.identity;
    first = false;
  }
  for (const auto& constraint : change.constraints) {
    if (constraint.primaryKey && identity) continue;
    sql += (constraint.primaryKey ? ", PRIMARY KEY (" : ", UNIQUE (") + names(constraint.columns) + ")";
  }
  return sql + ")";
}

std::string createIndex(const SchemaChange& change) {
  std::string sql = change.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ";
  sql += quotedName(change.name) + " ON " + quotedName(change.table) + " (";
  for (std::size_t i = 0; i < change.indexColumns.size(); ++i)
    sql += (i == 0 ? "" : ", ") + quotedName(change.indexColumns[i].first) +
           (change.indexColumns[i].second ? " DESC" : "");
  return sql + ")";
}

}  // namespace

std::string schemaStatement(const SchemaChange& change, const Catalog& catalog) {
  const auto known = [&](const std::string& table) {
    if (!catalog.find(table)) throw values::Errore("Invalid object name '" + table + "'.");
  };
  switch (change.kind) {
    case SchemaChange::Kind::CreateTable: return createTable(change);
    case SchemaChange::Kind::CreateIndex: known(change.table); return createIndex(change);
    case SchemaChange::Kind::DropTable:
      return std::string("DROP TABLE ") + (change.ifExists ? "IF EXISTS " : "") + quotedName(change.name);
    case SchemaChange::Kind::DropIndex:
      return std::string("DROP INDEX ") + (change.ifExists ? "IF EXISTS " : "") + quotedName(change.name);
    case SchemaChange::Kind::AddColumn:
      known(change.table);
      return "ALTER TABLE " + quotedName(change.table) + " ADD COLUMN " + columnText(change.columns[0], false);
    case SchemaChange::Kind::Truncate: known(change.table); return "DELETE FROM " + quotedName(change.table);
  }
  return {};
}

}  // namespace sqlite
