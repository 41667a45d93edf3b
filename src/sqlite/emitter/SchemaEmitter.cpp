#include "sqlite/emitter/SchemaEmitter.h"

#include "engine/SqlWords.h"
#include "sqlite/storage/StoredType.h"
#include "tsql/Names.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace sqlite {

using namespace engine;

using namespace tsql;

namespace {

std::string names(const std::vector<std::string>& columns) {
  std::string sql;
  for (const auto& column : columns) sql += (sql.empty() ? "" : ", ") + quotedName(column);
  return sql;
}

/// A default as the column stores it.
std::string defaultOf(const Column& column, const DefaultValue& value) {
  using Kind = DefaultValue::Kind;
  const Type& type = column.type;
  if (value.kind == Kind::Null) return "NULL";
  if (type.kind == TypeKind::DateTime)
    throw values::Errore("A default of the date column '" + column.name + "' is not supported");
  if (value.kind == Kind::Text) {
    if (type.kind == TypeKind::Decimal)
      throw values::Errore("The default of the decimal column '" + column.name + "' must be a whole number");
    const bool padded = type.kind == TypeKind::Text && type.fixed;
    return quotedText(padded ? values::padRight(value.text, static_cast<std::size_t>(type.length)) : value.text);
  }
  if (type.kind != TypeKind::Decimal || value.text == "0") return value.text;
  return value.text + std::string(static_cast<std::size_t>(type.scale), '0');
}

std::string columnText(const ColumnDefinition& definition, bool identityKey, std::string_view textOrder) {
  const Type& type = definition.column.type;
  std::string sql = quotedName(definition.column.name) + " ";
  if (definition.column.identity) {
    if (!identityKey)
      throw values::Errore("The identity column '" + definition.column.name + "' must be the table's primary key");
    return sql + "INTEGER " + identityConstraint(type);
  }
  sql += declaredType(type);
  if (type.kind == TypeKind::Text) sql.append(" COLLATE ").append(textOrder);
  if (!type.nullable) sql += " NOT NULL";
  if (definition.defaultValue) sql += " DEFAULT " + defaultOf(definition.column, *definition.defaultValue);
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

std::string createTable(const SchemaChange& change, std::string_view textOrder) {
  std::string sql = "CREATE TABLE " + quotedName(change.name) + " (";
  bool identity = false;
  bool keyed = false;
  bool first = true;
  for (const auto& definition : change.columns) {
    sql += (first ? "" : ", ") + columnText(definition, isIdentityKey(change, definition.column), textOrder);
    identity = identity || definition.column.identity;
    keyed = keyed || definition.primaryKey;
    first = false;
  }
  for (const auto& constraint : change.constraints) {
    keyed = keyed || constraint.primaryKey;
    if (constraint.primaryKey && identity) continue;
    sql += (constraint.primaryKey ? ", PRIMARY KEY (" : ", UNIQUE (") + names(constraint.columns) + ")";
  }
  // The rows lie in the order of their key, as SQL Server's do: one search finds a row, and rows that follow each other
  // in a key are read together.
  return sql + (keyed && !identity ? ") WITHOUT ROWID" : ")");
}

std::string createIndex(const SchemaChange& change) {
  std::string sql = change.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ";
  sql += quotedName(change.name) + " ON " + quotedName(change.table) + " (";
  std::string columns;
  for (const auto& column : change.indexColumns)
    columns += (columns.empty() ? "" : ", ") + quotedName(column.name) + (column.descending ? " DESC" : "");
  // Included columns make an index cover a query; here they are simply its last columns.
  for (const auto& column : change.includedColumns) columns += ", " + quotedName(column);
  std::string filters;
  for (const auto& [column, comparison, number] : change.indexFilters)
    filters.append(filters.empty() ? " WHERE " : " AND ")
        .append(quotedName(column) + " ")
        .append(comparison)
        .append(" " + number);
  return sql + columns + ")" + filters;
}

}  // namespace

std::string schemaStatement(const SchemaChange& change, std::string_view textOrder) {
  switch (change.kind) {
    case SchemaChange::Kind::CreateTable: return createTable(change, textOrder);
    case SchemaChange::Kind::CreateIndex: return createIndex(change);
    case SchemaChange::Kind::DropTable:
      return std::string("DROP TABLE ") + (change.ifExists ? "IF EXISTS " : "") + quotedName(change.name);
    case SchemaChange::Kind::DropIndex:
      return std::string("DROP INDEX ") + (change.ifExists ? "IF EXISTS " : "") + quotedName(change.name);
    case SchemaChange::Kind::AddColumn:
      return "ALTER TABLE " + quotedName(change.table) + " ADD COLUMN " +
             columnText(change.columns[0], false, textOrder);
    case SchemaChange::Kind::Truncate: return "DELETE FROM " + quotedName(change.table);
  }
  return {};
}

}  // namespace sqlite
