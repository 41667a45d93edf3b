#include <algorithm>
#include <cassert>
#include <utility>

#include "postgres/emitter/Emitter.h"
#include "values/Errore.h"

namespace postgres {

using namespace tsql;
using engine::typesOf;

namespace {

bool isText(const Type& type) { return type.kind == TypeKind::Text; }

std::string nameOf(const std::vector<ResultColumn>& columns, std::size_t i) {
  return sqlName(columns[i].name.empty() ? "c" + std::to_string(i) : columns[i].name);
}

/// c0, c1, …: names for the columns of a query that may have one name twice.
std::vector<std::string> plainNames(std::size_t count) {
  std::vector<std::string> names;
  for (std::size_t i = 0; i < count; ++i) names.push_back("c" + std::to_string(i));
  return names;
}

/// The rows of a query, each once. Texts that are equal may be written in several ways: one of them stands for all.
struct Distinct {
  std::vector<std::string> values, keys;

  Distinct(const std::vector<Type>& types, const std::string& relation, const std::string& filter = "") {
    for (std::size_t i = 0; i < types.size(); ++i) {
      const std::string column = relation + ".c" + std::to_string(i);
      values.push_back(isText(types[i]) ? "min(" + column + ")" + filter : column);
      keys.push_back(isText(types[i]) ? folded(column) : column);
    }
  }
};

std::string listed(const std::vector<std::string>& values, const std::vector<ResultColumn>& columns) {
  std::string sql;
  for (std::size_t i = 0; i < values.size(); ++i) sql += (i == 0 ? "" : ", ") + values[i] + " AS " + nameOf(columns, i);
  return sql;
}

/// Two queries whose texts are equal without being the same: each row is marked with the side that it comes from.
std::string combined(SetOperation operation, const std::string& left, const std::string& right,
                     const std::vector<Type>& types) {
  const auto names = engine::joined(plainNames(types.size()));
  const bool both = operation != SetOperation::Union;
  const Distinct distinct(types, "u", both ? " FILTER (WHERE u.s = 0)" : "");
  std::string sql = "SELECT " + engine::joined(distinct.values) + " FROM (SELECT 0, l.* FROM (" + left +
                    ") AS l UNION ALL SELECT 1, r.* FROM (" + right + ") AS r) AS u(s, " + names + ") GROUP BY " +
                    engine::joined(distinct.keys);
  if (both)
    sql += std::string(" HAVING min(u.s) = 0 AND max(u.s) = ") + (operation == SetOperation::Except ? "0" : "1");
  return sql;
}

}  // namespace

std::string Emitter::query(const Query& query) {
  const auto tables = commonTables(query);
  return tables + select(*query.select);
}

std::string Emitter::commonTables(const Query& query) {
  std::string sql;
  for (const auto& table : query.with) {
    std::vector<std::string> columns;
    for (std::size_t i = 0; i < table.columns.size(); ++i) columns.push_back(nameOf(table.columns, i));
    const auto targets = typesOf(table.columns);
    sql += (sql.empty() ? "WITH RECURSIVE " : ", ") + sqlName(table.name) + "(" + engine::joined(columns) + ") AS (" +
           select(*table.select, &targets, table.recursive) + ")";
  }
  return sql.empty() ? sql : sql + " ";
}

std::string Emitter::select(const Select& select, const Types* targets, bool cast) {
  if (!select.next) return core(select, targets, cast, select.orderBy);
  const Types types = targets ? *targets : typesOf(select.columns);
  auto rows = chain(select, types, cast);
  if (select.orderBy.empty()) return rows;
  std::vector<std::string> values;
  const auto names = plainNames(types.size());
  for (const auto& name : names) values.push_back("o." + name);
  return "SELECT " + listed(values, select.columns) + " FROM (" + rows + ") AS o(" + engine::joined(names) + ")" +
         order(select, values, select.orderBy);
}

/// Queries joined by UNION and its like.
std::string Emitter::chain(const Select& select, const Types& types, bool cast) {
  const bool texts = std::ranges::any_of(types, isText);
  std::string sql = core(select, &types, cast, {});
  const Select* previous = &select;
  for (const Select* branch = select.next.get(); branch; branch = branch->next.get()) {
    if (branch->top || select.top) throw values::Errore("TOP in a set operation is not supported");
    const auto operation = std::exchange(previous, branch)->setOperation;
    const auto right = core(*branch, &types, cast, {});
    if (texts && operation != SetOperation::UnionAll)
      sql = combined(operation, sql, right, types);
    else
      sql = "(" + sql + ")" + std::string(engine::operationWords(operation)) + "(" + right + ")";
  }
  return sql;
}

std::string Emitter::core(const Select& select, const Types* targets, bool cast,
                          const std::vector<OrderItem>& orderBy) {
  const std::string sources = from(select.sources, engine::droppedJoins(select, orderBy)) +
                              (select.where ? " WHERE " + words(*select.where) : "");
  const auto outerGroups = groups_.size();
  const auto grouping = groupBy(select);
  const auto pieces = items(select);
  assert(pieces.size() == select.columns.size() && (!targets || targets->size() == pieces.size()));
  const Types types = targets ? *targets : typesOf(select.columns);
  std::vector<std::string> values;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    auto sql = targets ? converted(pieces[i], types[i]) : value(pieces[i]);
    values.push_back(cast ? "(" + sql + ")::" + castType(types[i]) : std::move(sql));
  }
  std::string rest = sources + grouping;
  if (select.having) rest += " HAVING " + words(*select.having);
  std::string sql;
  if (select.distinct && std::ranges::any_of(types, isText)) {
    const Distinct distinct(types, "d");
    const auto names = engine::joined(plainNames(types.size()));
    sql = "SELECT " + listed(distinct.values, select.columns) + " FROM (SELECT " + engine::joined(values) + rest +
          ") AS d(" + names + ") GROUP BY " + engine::joined(distinct.keys);
    sql += order(select, distinct.values, orderBy);
  } else {
    sql = (select.distinct ? "SELECT DISTINCT " : "SELECT ") + listed(values, select.columns) + rest;
    sql += order(select, values, orderBy);
  }
  if (select.top) sql += " LIMIT " + scan_.literals[*select.top].text;
  groups_.resize(outerGroups);
  return sql;
}

/// " GROUP BY …"; what is grouped by is known to the expressions that are written from now on.
std::string Emitter::groupBy(const Select& select) {
  std::vector<std::string> keys;
  std::vector<Group> groups;
  for (const auto& e : select.groupBy) {
    Piece piece = valued(expression(*e));
    keys.push_back(isText(piece.type) ? folded(piece.sql) : piece.sql);
    if (isText(piece.type)) piece = {"min(" + piece.sql + ")", piece.type};
    groups.push_back({signature(*e), piece});
  }
  std::ranges::move(groups, std::back_inserter(groups_));
  return keys.empty() ? "" : " GROUP BY " + engine::joined(keys);
}

std::string Emitter::source(const Source& source) {
  const std::string alias = " AS " + sqlName(source.shownName());
  if (source.select) return "(" + select(*source.select) + ")" + alias;
  return sqlName(source.commonTable ? source.commonTable->name : source.catalogTable->name) + alias;
}

std::string Emitter::from(const std::vector<Source>& sources, const std::vector<bool>& dropped) {
  std::string sql;
  for (std::size_t i = 0; i < sources.size(); ++i) {
    if (dropped[i]) continue;
    const std::string name = source(sources[i]);
    sql.append(engine::joinWords(sources[i].join)).append(name);
    if (sources[i].condition) sql += " ON " + words(*sources[i].condition);
  }
  return sql;
}

std::string Emitter::order(const Select& select, const std::vector<std::string>& values,
                           const std::vector<OrderItem>& orderBy) {
  std::string sql;
  for (const auto& item : orderBy) sql += (sql.empty() ? " ORDER BY " : ", ") + orderItem(select, values, item);
  return sql;
}

/// @param values  the columns of the result in words.
std::string Emitter::orderItem(const Select& select, const std::vector<std::string>& values, const OrderItem& item) {
  std::optional<std::size_t> column = item.column;
  // Behind DISTINCT only what is selected can be seen.
  for (std::size_t i = 0; !column && select.distinct && i < select.items.size() && values.size() == select.items.size();
       ++i)
    if (!select.items[i].value->as<Star>() && signature(*select.items[i].value) == signature(*item.value)) column = i;
  const Piece piece = column ? Piece{values[*column], select.columns[*column].type} : valued(expression(*item.value));
  std::string sql = isText(piece.type) ? orderKey(piece.sql) : column ? std::to_string(*column + 1) : piece.sql;
  // Nulls come before every value.
  if (item.descending) return sql + (piece.type.nullable ? " DESC NULLS LAST" : " DESC");
  return sql + (piece.type.nullable ? " NULLS FIRST" : "");
}

}  // namespace postgres
