#include "sqlite/SchemaCatalog.h"

#include <utility>
#include <vector>

#include "sqlite/Handle.h"
#include "sqlite/emitter/Translate.h"
#include "sqlite/storage/StoredType.h"
#include "values/Text.h"

namespace sqlite {
namespace {

std::string columnText(const Prepared& statement, int position) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), position));
  return text == nullptr ? std::string() : std::string(text);
}

bool nextRow(sqlite3* database, const Prepared& statement) {
  const int outcome = sqlite3_step(statement.get());
  if (outcome != SQLITE_ROW && outcome != SQLITE_DONE) throwFailure(database);
  return outcome == SQLITE_ROW;
}

}  // namespace

SchemaCatalog::SchemaCatalog(sqlite3* database) : database_(database) { reload(); }

const tsql::Table* SchemaCatalog::find(std::string_view table) const {
  const auto found = tables_.find(values::foldText(table));
  return found == tables_.end() ? nullptr : &found->second;
}

bool SchemaCatalog::outdated() const { return readVersion() != version_; }

int SchemaCatalog::readVersion() const {
  const auto statement = prepare(database_, "PRAGMA main.schema_version");
  return nextRow(database_, statement) ? sqlite3_column_int(statement.get(), 0) : 0;
}

void SchemaCatalog::reload() {
  version_ = readVersion();
  tables_.clear();
  const auto older = prepare(database_, "SELECT 1 FROM main.sqlite_master WHERE sql LIKE '%COLLATE " +
                                            std::string(kOlderTextOrder) + "%' LIMIT 1");
  textOrder_ = nextRow(database_, older) ? kOlderTextOrder : kTextOrder;
  const auto statement = prepare(
      database_, "SELECT name FROM main.sqlite_master WHERE type IN ('table', 'view') AND name NOT LIKE 'sqlite_%'");
  while (nextRow(database_, statement)) {
    auto table = readTable(columnText(statement, 0));
    tables_.emplace(values::foldText(table.name), std::move(table));
  }
}

tsql::Table SchemaCatalog::readTable(const std::string& name) const {
  tsql::Table table;
  table.name = name;
  const auto created = prepare(database_, "SELECT sql FROM main.sqlite_master WHERE name = ?1");
  sqlite3_bind_text(created.get(), 1, name.c_str(), static_cast<int>(name.size()), SQLITE_TRANSIENT);
  const auto identity = nextRow(database_, created) ? identityType(columnText(created, 0)) : std::nullopt;

  const auto columns = prepare(database_, "SELECT name, type, \"notnull\", pk FROM pragma_table_info(?1)");
  sqlite3_bind_text(columns.get(), 1, name.c_str(), static_cast<int>(name.size()), SQLITE_TRANSIENT);
  while (nextRow(database_, columns)) {
    tsql::Column column;
    column.name = columnText(columns, 0);
    column.identity = identity && sqlite3_column_int(columns.get(), 3) == 1;
    column.type = column.identity ? *identity : parseDeclaredType(columnText(columns, 1));
    column.type.nullable = !column.identity && sqlite3_column_int(columns.get(), 2) == 0;
    table.columns.push_back(std::move(column));
  }
  return table;
}

}  // namespace sqlite
