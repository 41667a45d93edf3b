#pragma once

#include <libpq-fe.h>

#include <string>
#include <string_view>
#include <unordered_map>

#include "tsql/Catalog.h"

namespace postgres {

/// The tables of a schema with their columns in SQL Server's types. Tables stay where they are until the next load.
class SchemaCatalog : public tsql::Catalog {
 public:
  const tsql::Table* find(std::string_view table) const override;
  /// Reads the tables that the search path shows.
  void load(PGconn* server);
  /// Whether the tables have changed since the last load, by whichever program.
  bool outdated(PGconn* server) const;
  /// Whether the server has the functions that statements call, as this program makes them.
  bool hasFunctions() const { return hasFunctions_; }

 private:
  std::unordered_map<std::string, tsql::Table> tables_;
  std::string version_;
  bool hasFunctions_ = false;
};

}  // namespace postgres
