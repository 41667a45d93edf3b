#include "sqlite/emitter/Stages.h"

#include <algorithm>

#include "tsql/Names.h"
#include "tsql/Walk.h"
#include "values/Errore.h"

namespace sqlite {
using namespace tsql;
namespace {

bool reads(const Select& select, std::string_view name) {
  bool found = false;
  walkCores(select, [&](const Select& core) {
    for (const auto& source : core.sources) found = found || (!source.select && sameName(source.table, name));
  });
  return found;
}

/// An index serves an equality only when both sides have the same affinity. A wide sum has none: as a number its digits
/// would be rounded.
std::string_view stageAffinity(const Type& type) {
  switch (type.kind) {
    case TypeKind::Text: return " TEXT COLLATE BK_TEXT";
    case TypeKind::Float: return " REAL";
    case TypeKind::Unknown: return "";
    default: return isWide(type) ? "" : " NUMERIC";
  }
}

/// Calls back with the two sides of every equality between columns that an AND condition demands.
template <class Visit>
void equalities(const Expression* e, const Visit& visit) {
  if (!e || e->kind != Expression::Kind::Binary) return;
  if (e->name == "AND") {
    equalities(e->left.get(), visit);
    equalities(e->right.get(), visit);
  } else if (e->name == "=" && e->left->kind == Expression::Kind::Column &&
             e->right->kind == Expression::Kind::Column) {
    visit(*e->left);
    visit(*e->right);
  }
}

}  // namespace

bool Stages::staged() const {
  bool joined = false;
  const auto look = [&](const Select& core) {
    if (core.sources.size() < 2) return;
    for (const auto& source : core.sources)
      for (const auto& table : query_.with) joined = joined || (!source.select && sameName(source.table, table.name));
  };
  for (const auto& table : query_.with) walkCores(*table.select, look);
  walkCores(*query_.select, look);
  return joined || query_.with.size() > 1;
}

/// By upper-case name of the expression: the columns that equalities in WHERE and ON look its rows up by.
std::map<std::string, std::set<std::string>> Stages::lookupColumns() const {
  std::map<std::string, std::set<std::string>> lookups;
  const auto look = [&](const Select& core) {
    const auto note = [&](const Expression& column) {
      for (const auto& source : core.sources) {
        const std::string& alias = source.alias.empty() ? source.table : source.alias;
        if (!source.select && sameName(alias, column.qualifier))
          lookups[upperName(source.table)].insert(upperName(column.name));
      }
    };
    equalities(core.where.get(), note);
    for (const auto& source : core.sources) equalities(source.condition.get(), note);
  };
  for (const auto& table : query_.with) walkCores(*table.select, look);
  walkCores(*query_.select, look);
  return lookups;
}

void Stages::stage(const CommonTable& table, const std::set<std::string>& lookups, Emitter& emitter,
                   Translation& translation) {
  auto rows = emitter.select(*table.select, nullptr);
  if (!table.columns.empty()) {
    if (table.columns.size() != rows.columns.size())
      throw values::Errore("'" + table.name + "' has another number of columns than its column list");
    for (std::size_t i = 0; i < rows.columns.size(); ++i) rows.columns[i].name = table.columns[i];
  }
  const std::string name = std::string(prefix_) + upperName(table.name);
  const auto key = emitter.keyColumn(*table.select, rows.columns);
  std::string columns;
  for (std::size_t i = 0; i < rows.columns.size(); ++i) {
    const auto& column = rows.columns[i];
    if (column.name.empty()) throw values::Errore("A column of '" + table.name + "' has no name");
    columns.append(columns.empty() ? "" : ", ").append(quotedName(column.name));
    // A key that is the row number needs no index of its own.
    columns.append(key == i ? " INTEGER PRIMARY KEY" : stageAffinity(column.type));
  }
  const auto bare = [](std::string sql) { return StepText{std::move(sql), {}}; };
  translation.setup.push_back(bare("CREATE TEMP TABLE " + quotedName(name) + " (" + columns + ")"));
  for (const auto& lookup : lookups) {
    const auto known = std::find_if(rows.columns.begin(), rows.columns.end(),
                                    [&](const auto& column) { return sameName(column.name, lookup); });
    if (known != rows.columns.end() && !(key && rows.columns.begin() + static_cast<std::ptrdiff_t>(*key) == known))
      translation.setup.push_back(bare("CREATE INDEX temp." + quotedName(name + "_" + lookup) + " ON " +
                                       quotedName(name) + " (" + quotedName(lookup) + ")"));
  }
  translation.prepare.push_back(
      emitter.finish("INSERT INTO temp." + quotedName(name) + " " + emitter.withRecursive(rows.sql)));
  translation.cleanup.push_back(bare("DELETE FROM temp." + quotedName(name)));
  translation.teardown.push_back(bare("DROP TABLE IF EXISTS temp." + quotedName(name)));
  emitter.named[upperName(table.name)] = {"temp." + quotedName(name), std::move(rows.columns), nullptr};
}

void Stages::build(Emitter& emitter, Translation& translation) {
  const auto lookups = lookupColumns();
  const bool inSteps = staged();
  for (const auto& table : query_.with) {
    const std::string key = upperName(table.name);
    if (emitter.named.count(key) > 0) throw values::Errore("'" + table.name + "' stands twice in WITH");
    if (reads(*table.select, table.name) || !inSteps) {
      // Written into the statements that read it: a recursive one, or the only one.
      NamedQuery query{quotedName("cte_" + key), {}, &table};
      if (table.select->next) {
        query.columns = emitter.recursiveColumns(table);
      } else {
        query.columns = emitter.select(*table.select, nullptr).columns;
        emitter.finish({});
      }
      emitter.named[key] = std::move(query);
      continue;
    }
    const auto found = lookups.find(key);
    stage(table, found == lookups.end() ? std::set<std::string>{} : found->second, emitter, translation);
  }
}

}  // namespace sqlite
