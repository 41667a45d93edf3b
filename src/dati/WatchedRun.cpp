#include "dati/WatchedRun.h"

#include <utility>

#include "dati/Failure.h"

namespace bukorval::dati {

WatchedRun::WatchedRun(CLSKORVAL& budget, Transaction& transaction, DetailScope scope)
    : budget_(budget),
      transaction_(transaction),
      scope_(std::move(scope)),
      before_(transaction_.connection(), scope_) {}

void WatchedRun::operator()(const std::function<void(CLSKORVAL&)>& operation) {
  operation(budget_);
  requireSuccess(budget_);
  after_.emplace(transaction_.connection(), scope_);
  changes_ = amountChanges(before_, *after_);
}

}  // namespace bukorval::dati
