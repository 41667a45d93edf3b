#include "tsql/Resolver.h"

#include <algorithm>

#include "tsql/Names.h"
#include "tsql/TypeRules.h"
#include "tsql/Walk.h"
#include "values/Errore.h"

namespace tsql {
namespace {

constexpr const char* kOtherColumnCount = "A query with another number of columns than its place asks for";

bool reads(const Select& select, std::string_view name) {
  bool found = false;
  walkCores(select, [&](const Select& core) {
    for (const auto& source : core.sources) found = found || (!source.select && sameName(source.table, name));
  });
  return found;
}

std::vector<ResultColumn> columnsOf(const Table& table) {
  std::vector<ResultColumn> columns;
  for (const auto& column : table.columns) columns.push_back({column.name, column.type});
  return columns;
}

/// Rows that a join adds without a partner show Null in the other side's columns.
void makeNullable(std::vector<ResultColumn>& columns) {
  for (auto& column : columns) column.type.nullable = true;
}

/// The columns of the query under the names that the expression gives them.
std::vector<ResultColumn> renamed(const CommonTable& table) {
  auto columns = table.select->columns;
  if (table.columnNames.empty()) return columns;
  if (table.columnNames.size() != columns.size())
    throw values::Errore("'" + table.name + "' has another number of columns than its column list");
  for (std::size_t i = 0; i < columns.size(); ++i) columns[i].name = table.columnNames[i];
  return columns;
}

const Column& writable(const Table& table, std::string_view name) {
  const Column* column = table.find(name);
  if (!column) throw values::Errore("Invalid column name '" + std::string(name) + "'.");
  if (column->identity)
    throw values::Errore("Cannot write the identity column '" + column->name + "' of table '" + table.name + "'");
  return *column;
}

std::vector<const Column*> targetsOf(const Table& table, const std::vector<std::string>& names) {
  std::vector<const Column*> columns;
  for (const auto& name : names) {
    const Column* column = &writable(table, name);
    if (std::find(columns.begin(), columns.end(), column) != columns.end())
      throw values::Errore("Column '" + name + "' is written twice");
    columns.push_back(column);
  }
  if (names.empty())
    for (const auto& column : table.columns)
      if (!column.identity) columns.push_back(&column);
  return columns;
}

}  // namespace

void Resolver::resolve(Statement& statement) {
  std::visit([this](auto& kind) { resolve(kind); }, statement);
}

const Table& Resolver::table(std::string_view name) const {
  const Table* found = catalog_.find(name);
  if (!found) throw values::Errore("Invalid object name '" + std::string(name) + "'.");
  return *found;
}

void Resolver::resolve(Query& query) {
  for (auto& table : query.with) commonTable(table);
  select(*query.select, nullptr);
}

void Resolver::commonTable(CommonTable& table) {
  const std::string key = upperName(table.name);
  if (commonTables_.count(key) > 0) throw values::Errore("'" + table.name + "' stands twice in WITH");
  table.recursive = reads(*table.select, table.name);
  if (!table.recursive) {
    select(*table.select, nullptr);
    table.columns = renamed(table);
    commonTables_[key] = &table;
    return;
  }
  if (!table.select->next)
    throw values::Errore("'" + table.name + "' reads itself without a first query joined to it by UNION ALL");
  // The first query alone tells the columns: what follows reads the very name that is being made.
  core(*table.select, nullptr);
  table.columns = renamed(table);
  commonTables_[key] = &table;
  branches(*table.select, nullptr, true);
}

void Resolver::resolve(Change& change) {
  change.target = &table(change.table);
  if (change.kind == Change::Kind::Insert) {
    insert(change);
  } else {
    Scope scope{{{change.target->name, columnsOf(*change.target)}}};
    Scope sources;
    from(change.sources, sources);
    std::move(sources.relations.begin(), sources.relations.end(), std::back_inserter(scope.relations));
    for (auto& assignment : change.assignments) {
      assignment.target = &writable(*change.target, assignment.column);
      expression(*assignment.value, scope);
    }
    optional(change.where, scope);
  }
  if (change.condition) select(*change.condition, nullptr);
}

void Resolver::insert(Change& change) {
  change.targets = targetsOf(*change.target, change.columns);
  const auto count = [&](std::size_t values) {
    if (values != change.targets.size()) fail("The number of values is not the number of columns", change.offset);
  };
  if (change.select) {
    select(*change.select, nullptr);
    count(change.select->columns.size());
  }
  for (auto& row : change.rows) {
    count(row.size());
    for (auto& value : row) expression(*value, Scope{});
  }
}

void Resolver::resolve(SchemaChange& change) {
  using Kind = SchemaChange::Kind;
  if (change.kind != Kind::CreateIndex && change.kind != Kind::AddColumn && change.kind != Kind::Truncate) return;
  const auto& changed = table(change.table);
  for (const auto& filter : change.indexFilters) {
    const auto* column = changed.find(filter.column);
    if (!column) throw values::Errore("Invalid column name '" + filter.column + "'.");
    if (!isNumeric(column->type) || scaleOf(column->type) != 0)
      throw values::Errore("An index is filtered by columns of whole numbers, not by '" + filter.column + "'");
  }
}

void Resolver::select(Select& select, const Scope* outer) {
  core(select, outer);
  branches(select, outer, false);
}

/// The cores behind the head of a chain. Their types meet in the head's, unless those of the first stand.
void Resolver::branches(Select& head, const Scope* outer, bool firstDecides) {
  if (!head.next) return;
  for (Select* branch = head.next.get(); branch; branch = branch->next.get()) {
    core(*branch, outer);
    if (branch->columns.size() != head.columns.size())
      throw values::Errore(firstDecides
                               ? kOtherColumnCount
                               : "All queries of a UNION, INTERSECT or EXCEPT must have the same number of columns");
    for (std::size_t i = 0; i < head.columns.size() && !firstDecides; ++i)
      head.columns[i].type = unify(head.columns[i].type, branch->columns[i].type);
  }
  order(head.orderBy, head.columns, Scope{{}, outer});
}

void Resolver::core(Select& select, const Scope* outer) {
  Scope scope{{}, outer};
  from(select.sources, scope);
  select.columns.clear();
  for (auto& each : select.items) item(each, scope, select.columns);
  optional(select.where, scope);
  for (auto& group : select.groupBy) expression(*group, scope);
  optional(select.having, scope);
  if (!select.next) order(select.orderBy, select.columns, scope);
}

void Resolver::from(std::vector<Source>& sources, Scope& scope) {
  for (auto& source : sources) {
    Relation found = relation(source, scope.outer);
    for (const auto& other : scope.relations)
      if (sameName(other.alias, found.alias))
        fail("The name '" + found.alias + "' stands twice in FROM", source.offset);
    if (source.join == JoinKind::Full || source.join == JoinKind::Left) makeNullable(found.columns);
    if (source.join == JoinKind::Full || source.join == JoinKind::Right)
      for (auto& other : scope.relations) makeNullable(other.columns);
    scope.relations.push_back(std::move(found));
    optional(source.condition, scope);
  }
}

Resolver::Relation Resolver::relation(Source& source, const Scope* outer) {
  if (source.select) {
    select(*source.select, outer);
    return {source.shownName(), source.select->columns};
  }
  const auto common = commonTables_.find(upperName(source.table));
  if (common != commonTables_.end()) {
    source.commonTable = common->second;
    return {source.shownName(), source.commonTable->columns};
  }
  source.catalogTable = &table(source.table);
  return {source.shownName(), columnsOf(*source.catalogTable)};
}

void Resolver::item(SelectItem& item, const Scope& scope, std::vector<ResultColumn>& columns) {
  Expression& value = *item.value;
  if (auto* star = std::get_if<Star>(&value.node)) {
    bool found = false;
    for (const auto& relation : scope.relations) {
      if (!star->qualifier.empty() && !sameName(relation.alias, star->qualifier)) continue;
      found = true;
      for (const auto& column : relation.columns) star->parts.push_back({relation.alias, column});
      columns.insert(columns.end(), relation.columns.begin(), relation.columns.end());
    }
    if (!found) fail("No table to take the columns of '*' from", value.offset);
    return;
  }
  expression(value, scope);
  const auto* column = value.as<ColumnName>();
  columns.push_back({item.alias.empty() && column ? column->name : item.alias, value.type});
}

void Resolver::order(std::vector<OrderItem>& items, const std::vector<ResultColumn>& columns, const Scope& scope) {
  for (auto& item : items) {
    Expression& e = *item.value;
    if (const auto* constant = e.as<Constant>()) {
      const auto& literal = scan_.literals[constant->literal];
      const bool small = literal.kind == Literal::Kind::Integer && literal.text.size() < 6;
      const std::size_t position = small ? std::stoul(literal.text) : 0;
      if (position < 1 || position > columns.size()) fail("The ORDER BY position is no column of the result", e.offset);
      item.column = position - 1;
      continue;
    }
    if (const auto* name = e.as<ColumnName>(); name && name->qualifier.empty()) {
      const auto named = std::find_if(columns.begin(), columns.end(),
                                      [&](const auto& column) { return sameName(column.name, name->name); });
      if (named != columns.end()) item.column = static_cast<std::size_t>(named - columns.begin());
    }
    if (!item.column) expression(e, scope);
  }
}

}  // namespace tsql
