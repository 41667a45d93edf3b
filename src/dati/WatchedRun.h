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
///   WatchedRun run(budget, connection, scope);
///   run(&CLSKORVAL::BdgDupSchede_Duplicazione);
///   run.end(RunMode::Trial);
///   show(run.changes());
class WatchedRun {
 public:
  WatchedRun(CLSKORVAL& budget, ado::ConnectionPtr connection, DetailScope scope);
  /// As a part of a greater transaction.
  WatchedRun(CLSKORVAL& budget, Transaction& transaction, DetailScope scope);

  /// Throws Failure when the operation does not succeed; the transaction is then taken back with its scope.
  void operator()(const std::function<void(CLSKORVAL&)>& operation);
  /// Ends the transaction that is this run's own.
  void end(RunMode mode);

  ado::Connection& connection() const { return transaction_.connection(); }
  const DetailSnapshot& before() const { return before_; }
  const DetailSnapshot& after() const { return after_ ? *after_ : before_; }
  std::vector<AmountChange> changes() const { return amountChanges(before(), after()); }
  std::size_t newCards() const { return after().cards().size() - before().cards().size(); }

 private:
  std::optional<Transaction> own_;
  CLSKORVAL& budget_;
  Transaction& transaction_;
  DetailScope scope_;
  DetailSnapshot before_;
  std::optional<DetailSnapshot> after_;
};

}  // namespace bukorval::dati
