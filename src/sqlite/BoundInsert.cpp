#include "sqlite/BoundInsert.h"

#include <string>
#include <utility>

#include "engine/SqlWords.h"
#include "sqlite/Binder.h"
#include "sqlite/Handle.h"
#include "sqlite/SqliteConnection.h"

namespace sqlite {
namespace {

std::string textOf(const engine::BulkRow& row) {
  std::string names, values;
  for (const auto& column : row.columns()) {
    const char* separator = names.empty() ? "" : ", ";
    names.append(separator).append(engine::quotedName(column.column));
    values.append(separator).append("?");
  }
  return "INSERT INTO " + engine::quotedName(row.table()) + " (" + names + ") VALUES (" + values + ")";
}

class BoundInsert : public ado::BulkInsert {
 public:
  BoundInsert(const SqliteConnection& connection, sqlite3* database, engine::BulkRow columns)
      : connection_(connection),
        database_(database),
        row_(std::move(columns)),
        statement_(prepare(database, textOf(row_), SQLITE_PREPARE_PERSISTENT)) {}

  void add(const std::vector<values::Variant>& values) override {
    connection_.requireReady();
    for (std::size_t i = 0; i < values.size(); ++i)
      bindValue(statement_.get(), static_cast<int>(i) + 1, row_.convert(i, values[i]));
    stepToEnd(database_, statement_.get());
  }
  void finish() override {}

 private:
  const SqliteConnection& connection_;
  sqlite3* database_;
  engine::BulkRow row_;
  Prepared statement_;
};

}  // namespace

std::unique_ptr<ado::BulkInsert> insertBound(const SqliteConnection& connection, sqlite3* database,
                                             engine::BulkRow columns) {
  return std::make_unique<BoundInsert>(connection, database, std::move(columns));
}

}  // namespace sqlite
