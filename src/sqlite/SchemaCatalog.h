#pragma once

#include <sqlite3.h>

#include <string>
#include <string_view>
#include <unordered_map>

#include "tsql/Catalog.h"

namespace sqlite {

/// The tables of an open database with their columns in SQL Server's types. Tables stay where they are until the
/// next reload.
class SchemaCatalog : public tsql::Catalog {
 public:
  explicit SchemaCatalog(sqlite3* database);

  const tsql::Table* find(std::string_view table) const override;

  /// The collation that the texts of this database have.
  std::string_view textOrder() const { return textOrder_; }

  /// Whether the tables have changed since the last load, by whichever program.
  bool outdated() const;
  void reload();

 private:
  int readVersion() const;
  tsql::Table readTable(const std::string& name) const;

  sqlite3* database_;
  std::unordered_map<std::string, tsql::Table> tables_;
  std::string_view textOrder_;
  int version_ = 0;
};

}  // namespace sqlite
