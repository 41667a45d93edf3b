#include "postgres/emitter/Emitter.h"

namespace postgres {

using namespace tsql;

/// "[NOT] EXISTS (…)" of a change under IF, or nothing.
std::string Emitter::guard(const Change& change) {
  if (!change.condition) return {};
  return std::string(change.negated ? "NOT " : "") + "EXISTS (" + select(*change.condition) + ")";
}

/// " WHERE …" with the change's own condition and its guard, or nothing.
std::string Emitter::where(const Change& change) {
  const std::string own = change.where ? words(*change.where) : "";
  const std::string condition = guard(change);
  if (own.empty() && condition.empty()) return {};
  return " WHERE " + own + (own.empty() || condition.empty() ? "" : " AND ") + condition;
}

std::string Emitter::insert(const Change& change) {
  const auto& targets = change.targets;
  std::vector<std::string> names;
  for (const auto* target : targets) names.push_back(sqlName(target->name));
  std::string sql = "INSERT INTO " + sqlName(change.target->name) + " (" + engine::joined(names) + ")";
  const auto condition = [&] { return change.condition ? " WHERE " + guard(change) : std::string(); };
  for (std::size_t r = 0; r < change.rows.size(); ++r) {
    std::vector<std::string> values;
    for (std::size_t i = 0; i < targets.size(); ++i)
      values.push_back(assigned(expression(*change.rows[r][i]), *targets[i]));
    sql += (r == 0 ? " SELECT " : " UNION ALL SELECT ") + engine::joined(values) + condition();
  }
  if (change.select) {
    const auto rows = select(*change.select);
    std::vector<std::string> columns, values;
    for (std::size_t i = 0; i < targets.size(); ++i) {
      columns.push_back("v" + std::to_string(i));
      const Piece value{"s." + columns.back(), change.select->columns[i].type, std::nullopt, false, true};
      values.push_back(assigned(value, *targets[i]));
    }
    sql += " SELECT " + engine::joined(values) + " FROM (" + rows + ") AS s(" + engine::joined(columns) + ")" +
           condition();
  }
  for (const auto& column : change.target->columns) {
    if (!column.identity) continue;
    const std::string name = sqlName(column.name);
    sql += " RETURNING " + name;
    // Of many rows only the last is asked for.
    if (change.rows.size() != 1) sql = "WITH i AS (" + sql + ") SELECT max(i." + name + ") FROM i";
  }
  return sql;
}

std::string Emitter::update(const Change& change) {
  const auto sources = from(change.sources, std::vector<bool>(change.sources.size(), false));
  std::string sql = "UPDATE " + sqlName(change.target->name) + " SET ";
  for (std::size_t i = 0; i < change.assignments.size(); ++i) {
    const auto& assignment = change.assignments[i];
    sql += (i == 0 ? "" : ", ") + sqlName(assignment.target->name) + " = " +
           assigned(expression(*assignment.value), *assignment.target);
  }
  return sql + sources + where(change);
}

std::string Emitter::erase(const Change& change) {
  return "DELETE FROM " + sqlName(change.target->name) + where(change);
}

}  // namespace postgres
