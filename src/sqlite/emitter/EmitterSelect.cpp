#include <algorithm>

#include "sqlite/emitter/Emitter.h"
#include "tsql/Names.h"
#include "tsql/Walk.h"
#include "values/Errore.h"

namespace sqlite {
using namespace tsql;
namespace {

/// Types that a column of a set operation must have in every branch.
std::vector<Type> unified(const std::vector<ResultColumn>& a, const std::vector<ResultColumn>& b) {
  if (a.size() != b.size())
    throw values::Errore("All queries of a UNION, INTERSECT or EXCEPT must have the same number of columns");
  std::vector<Type> types;
  for (std::size_t i = 0; i < a.size(); ++i) types.push_back(unify(a[i].type, b[i].type));
  return types;
}

}  // namespace

Emitter::Rows Emitter::select(const Select& select, const Scope* outer, const std::vector<Type>* targets) {
  if (!select.next) return core(select, outer, targets, &select.orderBy);
  std::vector<Type> types;
  if (targets) {
    types = *targets;
  } else {
    const auto mark = bindings_.size();
    auto columns = core(select, outer, nullptr, nullptr).columns;
    for (const Select* branch = select.next.get(); branch; branch = branch->next.get()) {
      types = unified(columns, core(*branch, outer, nullptr, nullptr).columns);
      for (std::size_t i = 0; i < types.size(); ++i) columns[i].type = types[i];
    }
    bindings_.resize(mark);
  }
  Rows rows = core(select, outer, &types, nullptr);
  const Select* previous = &select;
  for (const Select* branch = select.next.get(); branch; branch = branch->next.get()) {
    if (branch->top || select.top) throw values::Errore("TOP in a set operation is not supported");
    rows.sql += " " + previous->setOperation + " " + core(*branch, outer, &types, nullptr).sql;
    previous = branch;
  }
  for (std::size_t i = 0; i < types.size(); ++i) rows.columns[i].type = types[i];
  if (!select.orderBy.empty()) rows.sql += order(select.orderBy, rows.columns, Scope{{}, outer});
  return rows;
}

Emitter::Rows Emitter::core(const Select& select, const Scope* outer, const std::vector<Type>* targets,
                            const std::vector<OrderItem>* orderBy) {
  Scope scope{{}, outer};
  const auto sources = from(select.sources, droppedJoins(select, orderBy), scope, readsStageFirst(select));
  Rows rows;
  auto values = items(select, scope, rows.columns);
  if (targets && targets->size() != values.size())
    throw values::Errore("A query with another number of columns than its place asks for");
  rows.sql = select.distinct ? "SELECT DISTINCT " : "SELECT ";
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (i > 0) rows.sql += ", ";
    const bool convert = targets && (*targets)[i].kind != TypeKind::Unknown;
    rows.sql += convert ? converted(values[i], (*targets)[i]) : value(values[i]);
    rows.sql += " AS " + quotedName(rows.columns[i].name.empty() ? "c" + std::to_string(i) : rows.columns[i].name);
    if (convert) rows.columns[i].type = (*targets)[i];
  }
  rows.sql += sources;
  if (select.where) rows.sql += " WHERE " + predicate(*select.where, scope);
  for (std::size_t i = 0; i < select.groupBy.size(); ++i)
    rows.sql += (i == 0 ? " GROUP BY " : ", ") + value(expression(*select.groupBy[i], scope));
  if (select.having) rows.sql += " HAVING " + predicate(*select.having, scope);
  if (orderBy && !orderBy->empty()) rows.sql += order(*orderBy, rows.columns, scope);
  if (select.top) rows.sql += " LIMIT " + scan_.literals[*select.top].text;
  return rows;
}

std::vector<Piece> Emitter::items(const Select& select, const Scope& scope, std::vector<ResultColumn>& columns) {
  std::vector<Piece> pieces;
  for (const auto& item : select.items) {
    if (item.value->kind == Expression::Kind::Star) {
      bool found = false;
      for (const auto& relation : scope.relations) {
        if (!item.value->qualifier.empty() && !sameName(relation.alias, item.value->qualifier)) continue;
        found = true;
        for (const auto& column : relation.columns) {
          pieces.push_back(
              {quotedName(relation.alias) + "." + quotedName(column.name), column.type, std::nullopt, false, true});
          columns.push_back(column);
        }
      }
      if (!found) fail("No table to take the columns of '*' from", item.value->offset);
      continue;
    }
    pieces.push_back(expression(*item.value, scope));
    std::string name = item.alias;
    if (name.empty() && item.value->kind == Expression::Kind::Column) name = item.value->name;
    columns.push_back({name, pieces.back().type});
  }
  return pieces;
}

namespace {

/// Rows that a join adds without a partner show Null in the other side's columns.
void makeNullable(Relation& relation) {
  for (auto& column : relation.columns) column.type.nullable = true;
}

}  // namespace

std::string Emitter::from(const std::vector<Source>& sources, const std::vector<bool>& dropped, Scope& scope,
                          bool stageFirst) {
  std::vector<std::string> words(sources.size());
  std::vector<std::string> conditions(sources.size());
  for (std::size_t i = 0; i < sources.size(); ++i) {
    if (dropped[i]) continue;
    const Source& source = sources[i];
    Relation found = relation(source, scope.outer, words[i]);
    for (const auto& other : scope.relations)
      if (sameName(other.alias, found.alias))
        fail("The name '" + found.alias + "' stands twice in FROM", source.offset);
    const bool full = source.join == "FULL OUTER JOIN";
    if (full || source.join == "LEFT OUTER JOIN") makeNullable(found);
    if (full || source.join == "RIGHT OUTER JOIN")
      for (auto& other : scope.relations) makeNullable(other);
    scope.relations.push_back(std::move(found));
    if (source.condition) conditions[i] = " ON " + predicate(*source.condition, scope);
  }
  std::string sql;
  for (std::size_t i = 0; i < sources.size(); ++i) {
    if (dropped[i]) continue;
    if (i == 0)
      sql += " FROM " + (stageFirst ? words[1] + " CROSS JOIN " + words[0] + conditions[1] : words[0]);
    else if (i > 1 || !stageFirst)
      sql += (sources[i].join == "," ? ", " : " " + sources[i].join + " ") + words[i] + conditions[i];
  }
  return sql;
}

/// A table joined to a stage is better looked up from the stage: the engine does not know how few rows a stage has,
/// and a stage's order serves a grouping by its key. CROSS JOIN is how the engine is told the order.
bool Emitter::readsStageFirst(const Select& select) const {
  if (select.sources.size() < 2 || select.sources[1].join != "INNER JOIN") return false;
  const Source& first = select.sources[0];
  const Source& second = select.sources[1];
  const auto isNamed = [&](const Source& source) { return !source.select && named.count(upperName(source.table)) > 0; };
  if (isNamed(first) || first.select || !isNamed(second)) return false;
  const NamedQuery& stage = named.at(upperName(second.table));
  if (stage.recursive) return false;
  if (select.groupBy.empty()) return true;
  const Expression& key = *select.groupBy.front();
  const std::string& alias = second.alias.empty() ? second.table : second.alias;
  if (key.kind != Expression::Kind::Column) return false;
  if (!key.qualifier.empty()) return sameName(key.qualifier, alias);
  return std::any_of(stage.columns.begin(), stage.columns.end(),
                     [&](const auto& c) { return sameName(c.name, key.name); });
}

/// The whole-number column that no two rows of the select share and that is never Null, if one can be told.
std::optional<std::size_t> Emitter::keyColumn(const Select& select, const std::vector<ResultColumn>& columns) const {
  if (select.next || columns.size() != select.items.size()) return std::nullopt;
  const Table* only = nullptr;
  if (select.groupBy.empty()) {
    const auto dropped = droppedJoins(select, nullptr);
    if (std::count(dropped.begin(), dropped.end(), false) != 1 || select.sources[0].select) return std::nullopt;
    if (named.count(upperName(select.sources[0].table)) > 0) return std::nullopt;
    only = &table(select.sources[0].table);
  } else if (select.groupBy.size() != 1 || select.groupBy[0]->kind != Expression::Kind::Column) {
    return std::nullopt;
  }
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const Expression& value = *select.items[i].value;
    const Type& type = columns[i].type;
    if (value.kind != Expression::Kind::Column || !isNumeric(type) || scaleOf(type) != 0 || isWide(type) ||
        type.nullable)
      continue;
    const bool key =
        only ? only->find(value.name) && only->find(value.name)->identity
             : sameName(value.name, select.groupBy[0]->name) && sameName(value.qualifier, select.groupBy[0]->qualifier);
    if (key) return i;
  }
  return std::nullopt;
}

/// Under DISTINCT a LEFT JOIN whose table is named nowhere else can only repeat rows that DISTINCT removes again.
std::vector<bool> Emitter::droppedJoins(const Select& select, const std::vector<OrderItem>* orderBy) const {
  std::vector<bool> dropped(select.sources.size(), false);
  if (!select.distinct || !select.groupBy.empty() || select.top) return dropped;
  for (std::size_t i = 1; i < select.sources.size(); ++i) {
    const Source& source = select.sources[i];
    if (source.join != "LEFT OUTER JOIN" || source.select) continue;
    const Table* found = catalog_.find(source.table);
    if (!found || named.count(upperName(source.table)) > 0) continue;
    const std::string& alias = source.alias.empty() ? source.table : source.alias;
    bool used = false;
    const auto look = [&](const Expression& e) {
      if (e.kind == Expression::Kind::Star) used = used || e.qualifier.empty() || sameName(e.qualifier, alias);
      if (e.kind == Expression::Kind::Column)
        used = used || (e.qualifier.empty() ? found->find(e.name) != nullptr : sameName(e.qualifier, alias));
    };
    for (const auto& item : select.items) walk(*item.value, look);
    if (select.where) walk(*select.where, look);
    if (select.having) walk(*select.having, look);
    for (std::size_t j = 0; j < select.sources.size(); ++j)
      if (j != i && select.sources[j].condition) walk(*select.sources[j].condition, look);
    if (orderBy)
      for (const auto& item : *orderBy) walk(*item.value, look);
    dropped[i] = !used;
  }
  return dropped;
}

std::string Emitter::order(const std::vector<OrderItem>& orderBy, const std::vector<ResultColumn>& columns,
                           const Scope& scope) {
  std::string sql;
  for (const auto& item : orderBy) {
    sql += sql.empty() ? " ORDER BY " : ", ";
    const Expression& e = *item.value;
    // A position and an alias stand for the column of the result.
    const bool alias =
        e.kind == Expression::Kind::Column && e.qualifier.empty() &&
        std::any_of(columns.begin(), columns.end(), [&](const auto& c) { return sameName(c.name, e.name); });
    if (e.kind == Expression::Kind::Literal) {
      const auto& literal = scan_.literals[e.literal];
      const int position =
          literal.kind == Literal::Kind::Integer && literal.text.size() < 6 ? std::stoi(literal.text) : 0;
      if (position < 1 || position > static_cast<int>(columns.size()))
        fail("The ORDER BY position is no column of the result", e.offset);
      sql += literal.text;
    } else if (alias) {
      sql += quotedName(e.name);
    } else {
      sql += value(expression(e, scope));
    }
    if (item.descending) sql += " DESC";
  }
  return sql;
}

}  // namespace sqlite
