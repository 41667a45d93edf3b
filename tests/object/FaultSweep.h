#pragma once

#include <regex>

#include "object/DemoCompany.h"
#include "support/FaultConnection.h"

namespace object_tests {

/// Runs that fail at every statement in turn.
class FaultSweep : public DemoCompany {
 protected:
  using Step = std::function<void(CLSKORVAL&)>;

  /// Each run must say 99 with its suffix, commit nothing and leave no transaction open: nothing of it stays. Ends
  /// when a run meets no fault; that one must write.
  /// @return the number of statements that failed.
  int sweep(const std::function<std::unique_ptr<CLSKORVAL>()>& prepare, const Step& run) {
    // What the framework understands of patterns differs by system.
    static const std::regex kFaultText("99 injected fault in [A-Za-z0-9_]+ ?");
    const CommitWatch watch(database);
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
      EXPECT_TRUE(std::regex_match(outcome(*bo), kFaultText)) << "statement " << k << ": " << outcome(*bo);
      if (watch.version() == before) continue;
      ADD_FAILURE() << "statement " << k << " left something: " << bo->errore();
      return k;
    }
  }
};

}  // namespace object_tests
