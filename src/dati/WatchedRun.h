#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "dati/DetailSnapshot.h"
#include "dati/Transaction.h"

namespace bukorval::dati {

/// Watches runs of the object over a budget, in a transaction: what its cards hold before, and what they hold after
/// the last run.
///
///   WatchedRun run(budget, transaction, scope);
///   run(&CLSKORVAL::BdgDupSchede_Duplicazione);
///   transaction.end(RunMode::Trial);
///   show(run.changes());
class WatchedRun {
 public:
  WatchedRun(CLSKORVAL& budget, Transaction& transaction, DetailScope scope);

  /// Throws Failure when the operation does not succeed; the transaction is then taken back with its scope.
  void operator()(const std::function<void(CLSKORVAL&)>& operation);

  ado::Connection& connection() const { return transaction_.connection(); }
  const DetailSnapshot& before() const { return before_; }
  const DetailSnapshot& after() const { return after_ ? *after_ : before_; }
  const std::vector<AmountChange>& changes() const { return changes_; }
  std::size_t newCards() const { return after().cards().size() - before().cards().size(); }

 private:
  CLSKORVAL& budget_;
  Transaction& transaction_;
  DetailScope scope_;
  DetailSnapshot before_;
  std::optional<DetailSnapshot> after_;
  std::vector<AmountChange> changes_;
};

}  // namespace bukorval::dati
