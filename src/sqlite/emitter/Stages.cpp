#include "sqlite/emitter/Stages.h"

#include <algorithm>

#include "sqlite/storage/StoredType.h"
#include "tsql/Names.h"
#include "tsql/Walk.h"
#include "values/Errore.h"

namespace sqlite {

using namespace tsql;

namespace {

/// An index serves an equality only when both sides have the same affinity. A wide sum has none: as a number its digits
/// would be rounded.
std::string stageAffinity(const Type& type, std::string_view textOrder) {
  switch (type.kind) {
    case TypeKind::Text: return " TEXT COLLATE " + std::string(textOrder);
    case TypeKind::Float: return " REAL";
    case TypeKind::Unknown: return "";
    default: return isWide(type) ? "" : " NUMERIC";
  }
}

/// Calls back with the two sides of every equality between columns that an AND condition demands.
template <class Visit>
void equalities(const Expression* e, const Visit& visit) {
  if (!e) return;
  if (const auto* logic = e->as<Logic>(); logic && logic->op == LogicOperator::And) {
    equalities(logic->left.get(), visit);
    equalities(logic->right.get(), visit);
    return;
  }
  const auto* comparison = e->as<Comparison>();
  if (!comparison || comparison->op != ComparisonOperator::Equal) return;
  const auto* left = comparison->left->as<ColumnName>();
  const auto* right = comparison->right->as<ColumnName>();
  if (!left || !right) return;
  visit(*left);
  visit(*right);
}

}  // namespace

bool Stages::staged() const {
  bool joined = false;
  const auto look = [&](const Select& core) {
    if (core.sources.size() < 2) return;
    for (const auto& source : core.sources) joined = joined || source.commonTable != nullptr;
  };
  for (const auto& table : query_.with) walkCores(*table.select, look);
  walkCores(*query_.select, look);
  return joined || query_.with.size() > 1;
}

/// By common table expression: the columns that equalities in WHERE and ON look its rows up by, in upper case.
std::map<const CommonTable*, std::set<std::string>> Stages::lookupColumns() const {
  std::map<const CommonTable*, std::set<std::string>> lookups;
  const auto look = [&](const Select& core) {
    const auto note = [&](const ColumnName& column) {
      for (const auto& source : core.sources)
        if (source.commonTable && sameName(source.shownName(), column.qualifier))
          lookups[source.commonTable].insert(upperName(column.name));
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
  const auto rows = emitter.select(*table.select);
  const std::string name = std::string(prefix_) + upperName(table.name);
  const auto key = emitter.keyColumn(*table.select);
  std::string columns;
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    const auto& column = table.columns[i];
    if (column.name.empty()) throw values::Errore("A column of '" + table.name + "' has no name");
    columns.append(columns.empty() ? "" : ", ").append(quotedName(column.name));
    // A key that is the row number needs no index of its own.
    columns.append(key == i ? " INTEGER PRIMARY KEY" : stageAffinity(column.type, emitter.textOrder()));
  }
  const auto bare = [](std::string sql) { return StepText{std::move(sql), {}}; };
  translation.setup.push_back(bare("CREATE TEMP TABLE " + quotedName(name) + " (" + columns + ")"));
  for (const auto& lookup : lookups) {
    const auto known = std::find_if(table.columns.begin(), table.columns.end(),
                                    [&](const auto& column) { return sameName(column.name, lookup); });
    if (known != table.columns.end() && !(key && table.columns.begin() + static_cast<std::ptrdiff_t>(*key) == known))
      translation.setup.push_back(bare("CREATE INDEX temp." + quotedName(name + "_" + lookup) + " ON " +
                                       quotedName(name) + " (" + quotedName(lookup) + ")"));
  }
  translation.prepare.push_back(
      emitter.finish("INSERT INTO temp." + quotedName(name) + " " + emitter.withInlined(rows)));
  translation.cleanup.push_back(bare("DELETE FROM temp." + quotedName(name)));
  translation.teardown.push_back(bare("DROP TABLE IF EXISTS temp." + quotedName(name)));
  emitter.named[upperName(table.name)] = {"temp." + quotedName(name)};
}

void Stages::build(Emitter& emitter, Translation& translation) {
  const auto lookups = lookupColumns();
  const bool inSteps = staged();
  for (const auto& table : query_.with) {
    const std::string key = upperName(table.name);
    if (table.recursive || !inSteps) {
      emitter.named[key] = {quotedName("cte_" + key), &table};
      continue;
    }
    const auto found = lookups.find(&table);
    stage(table, found == lookups.end() ? std::set<std::string>{} : found->second, emitter, translation);
  }
}

}  // namespace sqlite
