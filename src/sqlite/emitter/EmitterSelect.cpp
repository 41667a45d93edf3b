#include <algorithm>
#include <cassert>

#include "sqlite/emitter/Emitter.h"
#include "sqlite/storage/StoredType.h"
#include "tsql/Names.h"
#include "tsql/Walk.h"
#include "values/Errore.h"

namespace sqlite {

using namespace tsql;

std::string Emitter::select(const Select& select, const std::vector<Type>* targets, bool inner) {
  if (!select.next) return core(select, targets, select.orderBy, inner);
  const std::vector<Type> types = targets ? *targets : typesOf(select.columns);
  std::string sql = core(select, &types, {}, true);
  const Select* previous = &select;
  for (const Select* branch = select.next.get(); branch; branch = branch->next.get()) {
    if (branch->top || select.top) throw values::Errore("TOP in a set operation is not supported");
    sql.append(operationWords(previous->setOperation)).append(core(*branch, &types, {}, true));
    previous = branch;
  }
  return sql + order(select.orderBy);
}

std::string Emitter::core(const Select& select, const std::vector<Type>* targets, const std::vector<OrderItem>& orderBy,
                          bool inner) {
  const bool compared = inner || targets || select.distinct || !orderBy.empty();
  const auto sources = from(select.sources, droppedJoins(select, orderBy), readsStageFirst(select));
  const auto values = items(select);
  assert(values.size() == select.columns.size() && (!targets || targets->size() == values.size()));
  std::string sql = select.distinct ? "SELECT DISTINCT " : "SELECT ";
  for (std::size_t i = 0; i < values.size(); ++i) {
    const std::string& name = select.columns[i].name;
    if (i > 0) sql += ", ";
    const auto words = targets ? converted(values[i], (*targets)[i]) : value(values[i]);
    sql += compared ? collated(values[i], words) : words;
    sql += " AS " + quotedName(name.empty() ? "c" + std::to_string(i) : name);
  }
  sql += sources;
  if (select.where) sql += " WHERE " + words(*select.where);
  for (std::size_t i = 0; i < select.groupBy.size(); ++i) {
    const Piece key = valued(expression(*select.groupBy[i]));
    sql += (i == 0 ? " GROUP BY " : ", ") + collated(key, key.sql);
  }
  if (select.having) sql += " HAVING " + words(*select.having);
  sql += order(orderBy);
  if (select.top) sql += " LIMIT " + scan_.literals[*select.top].text;
  return sql;
}

const NamedQuery* Emitter::namedQuery(const Source& source) const {
  if (!source.commonTable) return nullptr;
  return &named.at(upperName(source.commonTable->name));
}

std::string Emitter::source(const Source& source) {
  const std::string alias = " AS " + quotedName(source.shownName());
  if (source.select) return "(" + select(*source.select, nullptr, true) + ")" + alias;
  if (const auto* query = namedQuery(source)) {
    used_.insert(upperName(source.commonTable->name));
    return query->sqlName + alias;
  }
  assert(source.catalogTable);
  return quotedName(source.catalogTable->name) + alias;
}

std::string Emitter::from(const std::vector<Source>& sources, const std::vector<bool>& dropped, bool stageFirst) {
  std::string sql;
  std::string first;
  for (std::size_t i = 0; i < sources.size(); ++i) {
    if (dropped[i]) continue;
    const std::string name = source(sources[i]);
    const std::string condition = sources[i].condition ? " ON " + words(*sources[i].condition) : "";
    if (stageFirst && i == 0)
      first = name;
    else if (stageFirst && i == 1)
      sql = " FROM " + name + " CROSS JOIN " + first + condition;
    else
      sql.append(joinWords(sources[i].join)).append(name).append(condition);
  }
  return sql;
}

/// A table joined to a stage is better looked up from the stage: the engine does not know how few rows a stage has,
/// and a stage's order serves a grouping by its key. CROSS JOIN is how the engine is told the order.
bool Emitter::readsStageFirst(const Select& select) const {
  if (select.sources.size() < 2 || select.sources[1].join != JoinKind::Inner) return false;
  const Source& second = select.sources[1];
  const auto* stage = namedQuery(second);
  if (!select.sources[0].catalogTable || !stage || stage->inlined) return false;
  if (select.groupBy.empty()) return true;
  const auto* key = select.groupBy.front()->as<ColumnName>();
  return key && sameName(key->relation, second.shownName());
}

std::optional<std::size_t> Emitter::keyColumn(const Select& select) const {
  if (select.next || select.columns.size() != select.items.size()) return std::nullopt;
  const Table* only = nullptr;
  const ColumnName* group = nullptr;
  if (select.groupBy.empty()) {
    const auto dropped = droppedJoins(select, {});
    if (std::count(dropped.begin(), dropped.end(), false) != 1) return std::nullopt;
    only = select.sources[0].catalogTable;
  } else if (select.groupBy.size() == 1) {
    group = select.groupBy.front()->as<ColumnName>();
  }
  if (!only && !group) return std::nullopt;
  for (std::size_t i = 0; i < select.columns.size(); ++i) {
    const auto* column = select.items[i].value->as<ColumnName>();
    const Type& type = select.columns[i].type;
    if (!column || !isNumeric(type) || scaleOf(type) != 0 || isWide(type) || type.nullable) continue;
    const Column* own = only ? only->find(column->name) : nullptr;
    const bool key = only ? own && own->identity
                          : sameName(column->name, group->name) && sameName(column->qualifier, group->qualifier);
    if (key) return i;
  }
  return std::nullopt;
}

std::string Emitter::order(const std::vector<OrderItem>& orderBy) {
  std::string sql;
  for (const auto& item : orderBy) {
    sql += sql.empty() ? " ORDER BY " : ", ";
    const auto* name = item.value->as<ColumnName>();
    if (!item.column) {
      const Piece key = valued(expression(*item.value));
      sql += collated(key, key.sql);
    } else {
      sql += name ? quotedName(name->name) : std::to_string(*item.column + 1);
    }
    if (item.descending) sql += " DESC";
  }
  return sql;
}

std::string Emitter::withInlined(const std::string& body) {
  std::string definitions;
  std::set<std::string> written;
  // Writing one may use another, so look again until nothing is new.
  for (bool more = true; more;) {
    more = false;
    for (const auto& name : std::set<std::string>(used_)) {
      const auto& query = named.at(name);
      if (!query.inlined || !written.insert(name).second) continue;
      std::string columns;
      for (const auto& column : query.inlined->columns)
        columns += (columns.empty() ? "" : ", ") + quotedName(column.name);
      const auto targets = typesOf(query.inlined->columns);
      definitions += (definitions.empty() ? "WITH RECURSIVE " : ", ") + query.sqlName + "(" + columns + ") AS (" +
                     select(*query.inlined->select, &targets) + ")";
      more = true;
    }
  }
  return definitions.empty() ? body : definitions + " " + body;
}

}  // namespace sqlite
