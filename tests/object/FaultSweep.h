#pragma once

#include <sqlite3.h>

#include "object/DemoCompany.h"
#include "sqlite/Handle.h"
#include "support/FaultConnection.h"

namespace object_tests {

/// Sees every commit to a database file through a handle of its own.
class CommitWatch {
 public:
  explicit CommitWatch(const std::string& path) {
    sqlite3* raw = nullptr;
    const int opened = sqlite3_open_v2(path.c_str(), &raw, SQLITE_OPEN_READONLY, nullptr);
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

/// Runs that fail at every statement in turn.
class FaultSweep : public DemoCompany {
 protected:
  using Step = std::function<void(CLSKORVAL&)>;

  /// Each run must say 99 with its suffix, commit nothing and leave no transaction open: nothing of it stays. Ends
  /// when a run meets no fault; that one must write.
  /// @return the number of statements that failed.
  int sweep(const std::function<std::unique_ptr<CLSKORVAL>()>& prepare, const Step& run) {
    const CommitWatch watch(file.path());
    const int before = watch.version();
    const auto broken = std::make_shared<testing_support::FaultConnection>(db);
    for (int k = 1;; ++k) {
      const auto bo = prepare();
      bo->Connessione(broken);
      broken->calls = 0;
      broken->failAt = k;
      run(*bo);
      EXPECT_NO_THROW(db->BeginTrans()) << "statement " << k << " left a transaction open";
      db->RollbackTrans();
      if (broken->calls < k) {
        EXPECT_EQ(outcome(*bo), "0 ");
        EXPECT_NE(watch.version(), before);
        return k - 1;
      }
      EXPECT_THAT(outcome(*bo), testing::MatchesRegex("99 injected fault in [A-Za-z0-9_]+ ?")) << "statement " << k;
      if (watch.version() == before) continue;
      ADD_FAILURE() << "statement " << k << " left something: " << bo->errore();
      return k;
    }
  }
};

}  // namespace object_tests
