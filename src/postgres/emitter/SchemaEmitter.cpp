#include "postgres/emitter/SchemaEmitter.h"

#include <algorithm>

#include "engine/SqlWords.h"
#include "postgres/emitter/Emitter.h"
#include "postgres/emitter/StoredType.h"
#include "tsql/Names.h"
#include "values/Errore.h"

namespace postgres {

using namespace tsql;
using engine::joined, engine::quotedText;

namespace {

/// An identity column takes its values from a sequence, whatever its type.
std::string sequenceOf(std::string_view table, std::string_view column) {
  return sqlName(std::string(table) + "_" + std::string(column) + "_SEQ");
}

std::string defaultOf(const DefaultValue& value) {
  switch (value.kind) {
    case DefaultValue::Kind::Null: return "NULL";
    case DefaultValue::Kind::Integer: return value.text;
    case DefaultValue::Kind::Text: break;
  }
  return quotedText(value.text);
}

std::string columnText(std::string_view table, const ColumnDefinition& definition) {
  const Column& column = definition.column;
  std::string sql = sqlName(column.name) + " " + declaredType(column.type);
  if (!column.type.nullable || column.identity) sql += " NOT NULL";
  if (column.identity) sql += " DEFAULT nextval(" + quotedText(sequenceOf(table, column.name)) + ")";
  if (definition.defaultValue) sql += " DEFAULT " + defaultOf(*definition.defaultValue);
  return sql;
}

/// What the table cannot say of a column itself.
std::string remarks(std::string_view table, const Column& column) {
  std::string sql;
  const std::string name = sqlName(table) + "." + sqlName(column.name);
  if (column.identity) sql += "; ALTER SEQUENCE " + sequenceOf(table, column.name) + " OWNED BY " + name;
  if (column.type.kind == TypeKind::Text && column.type.wide)
    sql += "; COMMENT ON COLUMN " + name + " IS " + quotedText(typeName(column.type));
  return sql;
}

/// A column as an index holds it: texts as they are compared.
std::string indexed(const std::string& name, bool text) { return text ? folded(sqlName(name)) : sqlName(name); }

class TableMaker {
 public:
  explicit TableMaker(const SchemaChange& change) : change_(change) {}

  std::string statements() {
    for (const auto& definition : change_.columns) {
      const auto& column = definition.column;
      if (column.identity) before_ += "CREATE SEQUENCE " + sequenceOf(change_.name, column.name) + "; ";
      lines_.push_back(columnText(change_.name, definition));
      after_ += remarks(change_.name, column);
    }
    for (const auto& definition : change_.columns)
      if (definition.primaryKey || definition.unique) constraint(definition.primaryKey, {definition.column.name});
    for (const auto& each : change_.constraints) constraint(each.primaryKey, each.columns);
    return before_ + "CREATE TABLE " + sqlName(change_.name) + " (" + joined(lines_) + ")" + after_;
  }

 private:
  const ColumnDefinition& definitionOf(const std::string& name) const {
    const auto found = std::ranges::find_if(
        change_.columns, [&](const auto& definition) { return sameName(definition.column.name, name); });
    if (found == change_.columns.end()) throw values::Errore("Invalid column name '" + name + "'.");
    return *found;
  }

  /// The server's own constraints know texts byte by byte only; an index over what is compared keeps ours.
  void constraint(bool primary, const std::vector<std::string>& columns) {
    std::vector<std::string> keys;
    bool texts = false;
    for (const auto& name : columns) {
      const bool text = definitionOf(name).column.type.kind == TypeKind::Text;
      texts = texts || text;
      keys.push_back(indexed(name, text));
    }
    if (!texts) {
      lines_.push_back((primary ? "PRIMARY KEY (" : "UNIQUE (") + joined(keys) + ")");
      return;
    }
    const std::string name = change_.name + (primary ? "_KEY" : "_UNIQUE" + std::to_string(++uniques_));
    after_ += "; CREATE UNIQUE INDEX " + sqlName(name) + " ON " + sqlName(change_.name) + " (" + joined(keys) + ")";
  }

  const SchemaChange& change_;
  std::string before_, after_;
  std::vector<std::string> lines_;
  int uniques_ = 0;
};

std::string createIndex(const SchemaChange& change, const Catalog& catalog) {
  const Table& table = *catalog.find(change.table);
  std::vector<std::string> keys, included;
  for (const auto& [name, descending] : change.indexColumns) {
    const Column* column = table.find(name);
    if (!column) throw values::Errore("Invalid column name '" + name + "'.");
    keys.push_back(indexed(name, column->type.kind == TypeKind::Text) + (descending ? " DESC" : ""));
  }
  for (const auto& name : change.includedColumns) included.push_back(sqlName(name));
  std::string sql = std::string(change.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") + sqlName(change.name) +
                    " ON " + sqlName(change.table) + " (" + joined(keys) + ")";
  if (!included.empty()) sql += " INCLUDE (" + joined(included) + ")";
  std::string filters;
  for (const auto& [column, comparison, number] : change.indexFilters)
    filters.append(filters.empty() ? " WHERE " : " AND ")
        .append(sqlName(column) + " ")
        .append(comparison)
        .append(" " + number);
  return sql + filters;
}

std::string addColumn(const SchemaChange& change) {
  const auto& definition = change.columns.front();
  if (definition.column.identity) throw values::Errore("An identity column is made with its table");
  return "ALTER TABLE " + sqlName(change.table) + " ADD COLUMN " + columnText(change.table, definition) +
         remarks(change.table, definition.column);
}

}  // namespace

std::string schemaStatements(const SchemaChange& change, const Catalog& catalog) {
  const std::string ifExists = change.ifExists ? "IF EXISTS " : "";
  switch (change.kind) {
    case SchemaChange::Kind::CreateTable: return TableMaker(change).statements();
    case SchemaChange::Kind::CreateIndex: return createIndex(change, catalog);
    case SchemaChange::Kind::DropTable: return "DROP TABLE " + ifExists + sqlName(change.name);
    case SchemaChange::Kind::DropIndex: return "DROP INDEX " + ifExists + sqlName(change.name);
    case SchemaChange::Kind::AddColumn: return addColumn(change);
    case SchemaChange::Kind::Truncate: return "TRUNCATE TABLE " + sqlName(change.table);
  }
  return {};
}

}  // namespace postgres
