#include <cstdlib>
#include <iostream>

#include "faults/FailingMemory.h"
#include "object/FaultSweep.h"

namespace object_tests {
namespace {

using faults::memory;

/// Elaborations of one card, each of which misses one allocation: every BUKORVAL_FAULT_STEP-th, one in 37 unless told
/// otherwise.
class OutOfMemory : public FaultSweep {
 protected:
  /// The elaboration has something to write again.
  void moveAmounts() {
    db->Execute("UPDATE CG42_MOVCONT SET CG42_IMPTOTALE = CG42_IMPTOTALE + 1");
    committed = watch.version();
  }

  /// @return whether the run needed the allocation that was refused.
  bool meets(long failAt, bool forGood) {
    const auto bo = elaboration({1});
    bo->DaScheda = bo->AScheda = "FIERE";
    memory = {true, forGood, 0, failAt};
    bool escaped = false;
    try {
      bo->BdgElaSchede_Elaborazione();
    } catch (...) {
      escaped = true;
    }
    memory.armed = false;
    EXPECT_FALSE(escaped) << "allocation " << failAt << ": an exception left the object";
    if (memory.allocations < failAt) {
      EXPECT_EQ(outcome(*bo), "0 ");
      EXPECT_NE(watch.version(), committed) << "the elaboration has something to write";
      return false;
    }
    // The engine gets by without some of what it asks for.
    if (bo->Stato() == 0) {
      ++managed;
      committed = watch.version();
    } else {
      EXPECT_EQ(bo->Stato(), 99) << bo->errore();
      EXPECT_EQ(watch.version(), committed) << "allocation " << failAt << " left something: " << bo->errore();
    }
    EXPECT_NO_THROW(db->BeginTrans()) << "allocation " << failAt << " left a transaction open: " << bo->errore();
    db->RollbackTrans();
    return true;
  }

  const CommitWatch watch{database};
  int committed = 0, managed = 0;
};

TEST_F(OutOfMemory, LeavesAnOutcomeAndNothingElse) {
  const char* given = std::getenv("BUKORVAL_FAULT_STEP");
  const long step = given ? std::atol(given) : 37;
  for (const bool forGood : {false, true}) {
    long failed = 0;
    moveAmounts();
    for (long failAt = 1; meets(failAt, forGood) && !HasFailure(); failAt += step) ++failed;
    EXPECT_GT(failed, 0);
    std::cout << failed << " allocations failed" << (forGood ? " with all after them" : "") << ", " << managed
              << " runs managed without\n";
  }
}

}  // namespace
}  // namespace object_tests
