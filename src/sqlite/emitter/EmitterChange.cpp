#include "sqlite/emitter/Emitter.h"
#include "tsql/Names.h"
#include "values/Errore.h"

namespace sqlite {
using namespace tsql;
namespace {

Scope scopeOf(const Table& table) {
  Scope scope;
  Relation relation{table.name, {}};
  for (const auto& column : table.columns) relation.columns.push_back({column.name, column.type});
  scope.relations.push_back(std::move(relation));
  return scope;
}

const Column& writable(const Table& table, std::string_view name) {
  const Column* column = table.find(name);
  if (!column) throw values::Errore("Invalid column name '" + std::string(name) + "'.");
  if (column->identity)
    throw values::Errore("Cannot write the identity column '" + column->name + "' of table '" + table.name + "'");
  return *column;
}

std::vector<const Column*> targets(const Table& table, const std::vector<std::string>& names) {
  std::vector<const Column*> columns;
  for (const auto& name : names) {
    columns.push_back(&writable(table, name));
    for (std::size_t i = 0; i + 1 < columns.size(); ++i)
      if (columns[i] == columns.back()) throw values::Errore("Column '" + name + "' is written twice");
  }
  if (names.empty())
    for (const auto& column : table.columns)
      if (!column.identity) columns.push_back(&column);
  return columns;
}

}  // namespace

/// " WHERE [NOT] EXISTS (…)" of a change under IF, or nothing.
std::string Emitter::guard(const Change& change, const Scope& scope) {
  if (!change.condition) return {};
  (void)scope;
  return std::string(change.negated ? "NOT " : "") + "EXISTS (" + select(*change.condition, nullptr).sql + ")";
}

std::string Emitter::insert(const Change& change) {
  const Table& into = table(change.table);
  const auto columns = targets(into, change.columns);
  std::string sql = "INSERT INTO " + quotedName(into.name) + " (";
  for (std::size_t i = 0; i < columns.size(); ++i) sql += (i == 0 ? "" : ", ") + quotedName(columns[i]->name);
  sql += ")";
  const auto counted = [&](std::size_t values) {
    if (values != columns.size()) fail("The number of values is not the number of columns", change.offset);
  };
  if (change.select) {
    const auto rows = select(*change.select, nullptr);
    counted(rows.columns.size());
    sql += " SELECT ";
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const std::string name = rows.columns[i].name.empty() ? "c" + std::to_string(i) : rows.columns[i].name;
      const Piece piece{"s." + quotedName("v" + std::to_string(i)), rows.columns[i].type, std::nullopt, false, true};
      sql += (i == 0 ? "" : ", ") + (piece.type.kind == TypeKind::Unknown ? piece.sql : assigned(piece, *columns[i]));
    }
    std::string names;
    for (std::size_t i = 0; i < columns.size(); ++i)
      names += (i == 0 ? "" : ", ") + quotedName("v" + std::to_string(i));
    sql = "WITH s(" + names + ") AS (" + rows.sql + ") " + sql + " FROM s";
    if (change.condition) sql += " WHERE " + guard(change, {});
    return sql;
  }
  for (std::size_t r = 0; r < change.rows.size(); ++r) {
    counted(change.rows[r].size());
    sql += r == 0 ? " SELECT " : " UNION ALL SELECT ";
    for (std::size_t i = 0; i < columns.size(); ++i)
      sql += (i == 0 ? "" : ", ") + assigned(expression(*change.rows[r][i], Scope{}), *columns[i]);
    if (change.condition) sql += " WHERE " + guard(change, {});
  }
  return sql;
}

std::string Emitter::update(const Change& change) {
  const Table& target = table(change.table);
  Scope scope = scopeOf(target);
  std::string from;
  if (!change.sources.empty()) {
    Scope sources;
    from = this->from(change.sources, std::vector<bool>(change.sources.size(), false), sources, false);
    for (auto& relation : sources.relations) scope.relations.push_back(std::move(relation));
  }
  std::string sql = "UPDATE " + quotedName(target.name) + " SET ";
  for (std::size_t i = 0; i < change.assignments.size(); ++i) {
    const Column& column = writable(target, change.assignments[i].first);
    sql += (i == 0 ? "" : ", ") + quotedName(column.name) + " = " +
           assigned(expression(*change.assignments[i].second, scope), column);
  }
  sql += from;
  std::string where = change.where ? predicate(*change.where, scope) : "";
  if (const auto condition = guard(change, scope); !condition.empty())
    where = where.empty() ? condition : where + " AND " + condition;
  return where.empty() ? sql : sql + " WHERE " + where;
}

std::string Emitter::erase(const Change& change) {
  const Table& target = table(change.table);
  const Scope scope = scopeOf(target);
  std::string where = change.where ? predicate(*change.where, scope) : "";
  if (const auto condition = guard(change, scope); !condition.empty())
    where = where.empty() ? condition : where + " AND " + condition;
  return "DELETE FROM " + quotedName(target.name) + (where.empty() ? "" : " WHERE " + where);
}

}  // namespace sqlite
