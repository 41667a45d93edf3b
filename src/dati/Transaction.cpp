#include "dati/Transaction.h"

#include <utility>

#include "dati/Failure.h"
#include "language/Language.h"

namespace bukorval::dati {

/// Hands everything on to a real connection but the ends of the object's transactions.
class Transaction::Shared : public ado::Connection {
 public:
  explicit Shared(ado::ConnectionPtr real) : real_(std::move(real)) {
    real_->BeginTrans();
    open_ = true;
  }

  void end(RunMode mode) {
    if (!open_) return;
    if (mode == RunMode::Trial) return RollbackTrans();
    real_->CommitTrans();
    open_ = false;
  }
  /// The failure that led here is the one to tell.
  void abandon() noexcept {
    try {
      if (open_) RollbackTrans();
    } catch (...) {
    }
  }

  void Open(std::string_view = {}, std::string_view = {}, std::int32_t = -1) override {}
  void Close() override {}
  ado::ObjectStateEnum State() const override { return real_->State(); }
  ado::ChangeTracker* changes() override { return real_->changes(); }
  ado::ConnectionPtr reader() override { return real_->reader(); }
  ado::RecordsetPtr Execute(std::string_view text) override { return opened().Execute(text); }
  void ForEachRow(std::string_view text, const ado::RowVisitor& visit) override { opened().ForEachRow(text, visit); }
  std::unique_ptr<ado::BulkInsert> bulkInsert(std::string_view table,
                                              const std::vector<std::string_view>& columns) override {
    return opened().bulkInsert(table, columns);
  }
  void BeginTrans() override {}
  void CommitTrans() override {}
  void RollbackTrans() override {
    open_ = false;
    real_->RollbackTrans();
  }

 private:
  /// Statements after a rollback would each be kept for themselves.
  ado::Connection& opened() const {
    if (!open_) throw Refused(tr("The transaction has ended: nothing more can be written in it"));
    return *real_;
  }

  ado::ConnectionPtr real_;
  bool open_ = false;
};

Transaction::Transaction(CLSKORVAL& budget, ado::ConnectionPtr connection, std::optional<Author> author)
    : budget_(budget),
      own_(std::move(connection)),
      recording_(*own_, budget.CodiceDitta, std::move(author)),
      shared_(std::make_shared<Shared>(own_)) {
  budget_.Connessione(shared_);
}

Transaction::~Transaction() {
  shared_->abandon();
  budget_.Connessione(own_);
}

ado::Connection& Transaction::connection() const { return *shared_; }

std::int64_t Transaction::end(RunMode mode, const std::optional<HistoryEntry>& undone) {
  const auto entry = mode == RunMode::Write ? recording_.finish(undone) : 0;
  shared_->end(mode);
  budget_.Connessione(own_);
  return entry;
}

}  // namespace bukorval::dati
