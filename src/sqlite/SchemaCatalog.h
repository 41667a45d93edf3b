#pragma once

#include <sqlite3.h>

#include <string>
#include <string_view>
#include <unordered_map>

#include "tsql/Translation.h"

namespace ado::sqlite {

/// The tables of an open database with their columns in SQL Server's types. Tables stay where they are until the
/// next reload.
class SchemaCatalog : public dialect::Catalog {
 public:
  explicit SchemaCatalog(sqlite3* database);

  const dialect::Table* find(std::string_view table) const override;

  /// Whether the tables have changed since the last load, by whichever program.
  bool outdated() const;
  void reload();

 private:
  int readVersion() const;
  dialect::Table readTable(const std::string& name) const;

  sqlite3* database_;
  std::unordered_map<std::string, dialect::Table> tables_;
  int version_ = 0;
};

}  // namespace ado::sqlite
