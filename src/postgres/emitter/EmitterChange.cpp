#include "postgres/emitter/Emitter.h"

namespace postgres {

using namespace tsql;

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

}  // namespace postgres
