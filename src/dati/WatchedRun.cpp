#include "dati/WatchedRun.h"

#include <utility>

#include "dati/Failure.h"

namespace bukorval::dati {

WatchedRun::WatchedRun(CLSKORVAL& budget, ado::ConnectionPtr connection, DetailScope scope)
    : own_(std::in_place, budget, std::move(connection)),
      budget_(budget),
      transaction_(*own_),
      scope_(std::move(scope)),
      before_(transaction_.connection(), scope_) {}

WatchedRun::WatchedRun(CLSKORVAL& budget, Transaction& transaction, DetailScope scope)
    : budget_(budget),
      transaction_(transaction),
      scope_(std::move(scope)),
      before_(transaction_.connection(), scope_) {}

void WatchedRun::operator()(const std::function<void(CLSKORVAL&)>& operation) {
  operation(budget_);
  requireSuccess(budget_);
  after_.emplace(transaction_.connection(), scope_);
}

void WatchedRun::end(RunMode mode) {
  if (own_) own_->end(mode);
}

}  // namespace bukorval::dati
