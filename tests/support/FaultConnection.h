#pragma once

#include "ado/connection/Connection.h"
#include "support/Test.h"

namespace testing_support {

/// Passes everything on to a real connection, but the k-th call (statements and transaction calls counted from 1)
/// throws instead: for sweeps that fail every step of a run.
class FaultConnection : public ado::Connection {
 public:
  explicit FaultConnection(ado::ConnectionPtr real) : real_(std::move(real)) {}

  int failAt = 0;  ///< 0 never fails
  int calls = 0;
  static constexpr const char* kFault = "injected fault";

  void Open(std::string_view = {}, std::string_view = {}, std::int32_t = -1) override {}
  void Close() override {}
  ado::ObjectStateEnum State() const override { return real_->State(); }
  ado::RecordsetPtr Execute(std::string_view text) override {
    step();
    return real_->Execute(text);
  }
  void BeginTrans() override {
    step();
    real_->BeginTrans();
  }
  void CommitTrans() override {
    step();
    real_->CommitTrans();
  }
  /// Never fails: what a test wants to see is that it is called.
  void RollbackTrans() override { real_->RollbackTrans(); }

 private:
  void step() {
    if (++calls == failAt) throw values::Errore(kFault);
  }
  ado::ConnectionPtr real_;
};

}  // namespace testing_support
