#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ado/connection/Connection.h"

namespace bench {

/// Passes everything on and keeps what it was sent.
class Recorder : public ado::Connection {
 public:
  explicit Recorder(ado::ConnectionPtr real) : real_(std::move(real)) {}
  std::vector<std::string> texts;

  void Open(std::string_view = {}, std::string_view = {}, std::int32_t = -1) override {}
  void Close() override {}
  ado::ObjectStateEnum State() const override { return real_->State(); }
  ado::RecordsetPtr Execute(std::string_view text) override {
    texts.emplace_back(text);
    return real_->Execute(text);
  }
  void BeginTrans() override {
    texts.emplace_back("BEGIN");
    real_->BeginTrans();
  }
  void CommitTrans() override {
    texts.emplace_back("COMMIT");
    real_->CommitTrans();
  }
  void RollbackTrans() override { real_->RollbackTrans(); }

 private:
  ado::ConnectionPtr real_;
};

}  // namespace bench
