#include "dati/WatchedRun.h"

#include <functional>
#include <memory>
#include <utility>

#include "dati/Failure.h"

namespace bukorval::dati {
namespace {

/// Hands everything on to a real connection, and asks before a commit whether it is a trial: then it rolls back.
class WatchedConnection : public ado::Connection {
 public:
  /// @param transactions  that follow each other and are one for the database.
  WatchedConnection(ado::ConnectionPtr real, std::size_t transactions, std::function<RunMode()> beforeCommit)
      : real_(std::move(real)), left_(transactions), beforeCommit_(std::move(beforeCommit)) {}

  /// Takes back what the transactions before the failed one wrote.
  void abandon() {
    if (open_) RollbackTrans();
  }

  void Open(std::string_view = {}, std::string_view = {}, std::int32_t = -1) override {}
  void Close() override {}
  ado::ObjectStateEnum State() const override { return real_->State(); }
  ado::RecordsetPtr Execute(std::string_view text) override { return real_->Execute(text); }
  void BeginTrans() override {
    if (!open_) real_->BeginTrans();
    open_ = true;
  }
  void CommitTrans() override {
    if (left_ > 1) {
      --left_;
      return;
    }
    if (beforeCommit_() == RunMode::Trial)
      real_->RollbackTrans();
    else
      real_->CommitTrans();
    open_ = false;
  }
  void RollbackTrans() override {
    open_ = false;
    real_->RollbackTrans();
  }

 private:
  ado::ConnectionPtr real_;
  std::size_t left_;
  bool open_ = false;
  std::function<RunMode()> beforeCommit_;
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
  (*this)({[this, operation] { (budget_.*operation)(); }});
}

void WatchedRun::operator()(const std::vector<std::function<void()>>& operations) {
  const auto watched = std::make_shared<WatchedConnection>(connection_, operations.size(), [this] {
    after_.emplace(*connection_, scope_);
    return verdict_ && !verdict_() ? RunMode::Trial : mode_;
  });
  const LentConnection lent(budget_, connection_, watched);
  for (const auto& operation : operations) {
    operation();
    if (budget_.Stato() != bdgStatoOk) watched->abandon();
    requireSuccess(budget_);
  }
}

}  // namespace bukorval::dati
