#include "sqlite/emitter/Emitter.h"

namespace sqlite {

using namespace tsql;

std::string Emitter::insert(const Change& change) {
  const auto& targets = change.targets;
  std::string sql = "INSERT INTO " + quotedName(change.target->name) + " (";
  for (std::size_t i = 0; i < targets.size(); ++i) sql += (i == 0 ? "" : ", ") + quotedName(targets[i]->name);
  sql += ")";
  for (std::size_t r = 0; r < change.rows.size(); ++r) {
    sql += r == 0 ? " SELECT " : " UNION ALL SELECT ";
    for (std::size_t i = 0; i < targets.size(); ++i)
      sql += (i == 0 ? "" : ", ") + assigned(expression(*change.rows[r][i]), *targets[i]);
    if (change.condition) sql += " WHERE " + guard(change);
  }
  if (!change.select) return sql;
  const auto rows = select(*change.select);
  std::string names;
  std::string values;
  for (std::size_t i = 0; i < targets.size(); ++i) {
    const std::string name = quotedName("v" + std::to_string(i));
    const Piece value{"s." + name, change.select->columns[i].type, std::nullopt, false, true};
    names += (i == 0 ? "" : ", ") + name;
    values += (i == 0 ? "" : ", ") + (value.type.kind == TypeKind::Unknown ? value.sql : assigned(value, *targets[i]));
  }
  sql = "WITH s(" + names + ") AS (" + rows + ") " + sql + " SELECT " + values + " FROM s";
  return change.condition ? sql + " WHERE " + guard(change) : sql;
}

}  // namespace sqlite
