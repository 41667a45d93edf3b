#pragma once

#include <sqlite3.h>

#include "demo/DemoAzienda.h"
#include "schema/Schema.h"
#include "sqlite/Handle.h"
#include "sqlite/Provider.h"
#include "sqlite/TemporaryDatabase.h"

/// Where the tests of the whole object keep the demo company: in a file. Another engine's header of that name takes
/// the place of this one.
namespace object_tests {

class Database : public sqlite_tests::TemporaryDatabase {
 public:
  Database() {
    sqlite::registerSqlite();
    const auto connection = open();
    schema::create(*connection);
    demo::creaDemo(*connection);
  }
};

/// Sees every commit to a database file through a handle of its own.
class CommitWatch {
 public:
  explicit CommitWatch(const Database& database) {
    sqlite3* raw = nullptr;
    const int opened = sqlite3_open_v2(database.path().c_str(), &raw, SQLITE_OPEN_READONLY, nullptr);
    database_.reset(raw);
    sqlite3_stmt* statement = nullptr;
    if (opened == SQLITE_OK) sqlite3_prepare_v2(raw, "PRAGMA data_version", -1, &statement, nullptr);
    version_.reset(statement);
  }
  /// A number that stays the same as long as nobody else commits a change.
  int version() const {
    EXPECT_EQ(sqlite3_step(version_.get()), SQLITE_ROW);
    const int number = sqlite3_column_int(version_.get(), 0);
    sqlite3_reset(version_.get());
    return number;
  }

 private:
  sqlite::Database database_;
  sqlite::Prepared version_;
};

}  // namespace object_tests
