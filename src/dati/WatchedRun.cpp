#include "dati/WatchedRun.h"

#include <functional>
#include <memory>
#include <utility>

#include "dati/Failure.h"

namespace bukorval::dati {
namespace {

/// Hands everything on to a real connection, and looks before a commit; in a trial it then rolls back.
class WatchedConnection : public ado::Connection {
 public:
  WatchedConnection(ado::ConnectionPtr real, RunMode mode, std::function<void()> beforeCommit)
      : real_(std::move(real)), mode_(mode), beforeCommit_(std::move(beforeCommit)) {}

  void Open(std::string_view = {}, std::string_view = {}, std::int32_t = -1) override {}
  void Close() override {}
  ado::ObjectStateEnum State() const override { return real_->State(); }
  ado::RecordsetPtr Execute(std::string_view text) override { return real_->Execute(text); }
  void BeginTrans() override { real_->BeginTrans(); }
  void CommitTrans() override {
    beforeCommit_();
    if (mode_ == RunMode::Trial)
      real_->RollbackTrans();
    else
      real_->CommitTrans();
  }
  void RollbackTrans() override { real_->RollbackTrans(); }

 private:
  ado::ConnectionPtr real_;
  RunMode mode_;
  std::function<void()> beforeCommit_;
};

/// Another connection for the object as long as this lives.
class LentConnection {
 public:
  LentConnection(CLSKORVAL& budget, ado::ConnectionPtr own, ado::ConnectionPtr lent)
      : budget_(budget), own_(std::move(own)) {
    budget_.Connessione(std::move(lent));
  }
  ~LentConnection() { budget_.Connessione(own_); }
  LentConnection(const LentConnection&) = delete;
  LentConnection& operator=(const LentConnection&) = delete;

 private:
  CLSKORVAL& budget_;
  ado::ConnectionPtr own_;
};

}  // namespace

WatchedRun::WatchedRun(CLSKORVAL& budget, ado::ConnectionPtr connection, DetailScope scope, RunMode mode)
    : budget_(budget),
      connection_(std::move(connection)),
      scope_(std::move(scope)),
      mode_(mode),
      before_(*connection_, scope_) {}

void WatchedRun::operator()(void (CLSKORVAL::*operation)()) {
  const auto watched =
      std::make_shared<WatchedConnection>(connection_, mode_, [this] { after_.emplace(*connection_, scope_); });
  const LentConnection lent(budget_, connection_, watched);
  (budget_.*operation)();
  requireSuccess(budget_);
}

}  // namespace bukorval::dati
