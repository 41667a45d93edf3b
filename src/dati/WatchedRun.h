#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "ado/connection/Connection.h"
#include "dati/DetailSnapshot.h"
#include "object/CLSKORVAL.h"

namespace bukorval::dati {

enum class RunMode {
  Write,
  Trial  ///< taken back where the object commits, so that nothing of it stays
};

/// Watches one run of the object over a budget: what its cards hold before it, and what they hold when the object
/// commits, read in its transaction. A run that commits nothing leaves them as they were.
///
///   WatchedRun run(budget, connection, scope, RunMode::Trial);
///   run(&CLSKORVAL::BdgDupSchede_Duplicazione);
///   show(run.changes());
class WatchedRun {
 public:
  /// @param connection  the object's own; it has it back after the run, whatever happens.
  WatchedRun(CLSKORVAL& budget, ado::ConnectionPtr connection, DetailScope scope, RunMode mode);

  /// Asked when all is done and the snapshot afterwards is taken, before the commit: false takes the run back.
  void keepIf(std::function<bool()> verdict) { verdict_ = std::move(verdict); }

  /// Throws Failure when the operation does not succeed.
  void operator()(void (CLSKORVAL::*operation)());
  /// Several operations of the object, each with a transaction, as one: all of them stay or none.
  void operator()(const std::vector<std::function<void()>>& operations);

  const DetailSnapshot& before() const { return before_; }
  const DetailSnapshot& after() const { return after_ ? *after_ : before_; }
  std::vector<AmountChange> changes() const { return amountChanges(before(), after()); }
  std::size_t newCards() const { return after().cards().size() - before().cards().size(); }

 private:
  CLSKORVAL& budget_;
  ado::ConnectionPtr connection_;
  DetailScope scope_;
  RunMode mode_;
  DetailSnapshot before_;
  std::optional<DetailSnapshot> after_;
  std::function<bool()> verdict_;
};

}  // namespace bukorval::dati
