#include "sqlite/emitter/Emitter.h"
#include "tsql/Names.h"
#include "values/Errore.h"

namespace sqlite {
using namespace tsql;

const Table& Emitter::table(std::string_view name) const {
  const Table* found = catalog_.find(name);
  if (!found) throw values::Errore("Invalid object name '" + std::string(name) + "'.");
  return *found;
}

/// The relation of one source; `sql` receives how a FROM clause names it.
Relation Emitter::relation(const Source& source, const Scope* outer, std::string& sql) {
  Relation relation;
  relation.alias = source.alias.empty() ? source.table : source.alias;
  if (source.select) {
    auto rows = select(*source.select, outer);
    relation.columns = std::move(rows.columns);
    sql = "(" + rows.sql + ") AS " + quotedName(relation.alias);
    return relation;
  }
  const auto query = named.find(upperName(source.table));
  if (query != named.end()) {
    used_.insert(query->first);
    relation.columns = query->second.columns;
    sql = query->second.sqlName + " AS " + quotedName(relation.alias);
    return relation;
  }
  const Table& found = table(source.table);
  for (const auto& column : found.columns) relation.columns.push_back({column.name, column.type});
  sql = quotedName(found.name) + " AS " + quotedName(relation.alias);
  return relation;
}

Piece Emitter::column(const Expression& e, const Scope& scope) const {
  const Relation* owner = nullptr;
  const ResultColumn* found = nullptr;
  for (const auto& relation : scope.relations) {
    if (!e.qualifier.empty() && !sameName(relation.alias, e.qualifier)) continue;
    for (const auto& candidate : relation.columns) {
      if (!sameName(candidate.name, e.name)) continue;
      if (found) fail("Ambiguous column name '" + e.name + "'", e.offset);
      owner = &relation;
      found = &candidate;
    }
  }
  if (found) return {quotedName(owner->alias) + "." + quotedName(found->name), found->type, std::nullopt, false, true};
  if (scope.outer) return column(e, *scope.outer);
  const std::string name = e.qualifier.empty() ? e.name : e.qualifier + "." + e.name;
  fail("Invalid column name '" + name + "'", e.offset);
}

std::vector<ResultColumn> Emitter::rename(std::vector<ResultColumn> columns, const CommonTable& table) const {
  if (table.columns.empty()) return columns;
  if (table.columns.size() != columns.size())
    throw values::Errore("'" + table.name + "' has another number of columns than its column list");
  for (std::size_t i = 0; i < columns.size(); ++i) columns[i].name = table.columns[i];
  return columns;
}

std::vector<ResultColumn> Emitter::recursiveColumns(const CommonTable& table) {
  Select& first = *table.select;
  // The anchor alone: what follows reads the very name that is being made.
  SelectPtr rest = std::move(first.next);
  const std::string operation = std::exchange(first.setOperation, {});
  const auto mark = bindings_.size();
  auto restore = [&] {
    first.next = std::move(rest);
    first.setOperation = operation;
    bindings_.resize(mark);
  };
  try {
    auto columns = rename(select(first, nullptr).columns, table);
    restore();
    return columns;
  } catch (...) {
    restore();
    throw;
  }
}

std::string Emitter::withRecursive(const std::string& body) {
  std::string definitions;
  std::set<std::string> written;
  // Writing one may use another, so look again until nothing is new.
  for (bool more = true; more;) {
    more = false;
    for (const auto& name : std::set<std::string>(used_)) {
      const auto& query = named.at(name);
      if (!query.recursive || !written.insert(name).second) continue;
      std::vector<Type> targets;
      std::string columns;
      for (const auto& column : query.columns) {
        targets.push_back(column.type);
        columns += (columns.empty() ? "" : ", ") + quotedName(column.name);
      }
      const auto rows = select(*query.recursive->select, nullptr, &targets);
      definitions +=
          (definitions.empty() ? "WITH RECURSIVE " : ", ") + query.sqlName + "(" + columns + ") AS (" + rows.sql + ")";
      more = true;
    }
  }
  return definitions.empty() ? body : definitions + " " + body;
}

}  // namespace sqlite
