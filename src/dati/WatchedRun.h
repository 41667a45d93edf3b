#pragma once

#include <functional>
#include <utility>

#include "ado/connection/Connection.h"

namespace bukorval::host {

/// Hands everything on to a real connection, and looks before a run is committed: what it has written can still be
/// read, compared and, in a trial run, taken back.
class ConnessioneOsservata : public ado::Connection {
 public:
  /// @param prova  rolls back where the object commits, so that nothing of the run stays.
  ConnessioneOsservata(ado::ConnectionPtr vera, bool prova, std::function<void()> primaDiConfermare)
      : vera_(std::move(vera)), prova_(prova), primaDiConfermare_(std::move(primaDiConfermare)) {}

  void Open(std::string_view = {}, std::string_view = {}, std::int32_t = -1) override {}
  void Close() override {}
  ado::ObjectStateEnum State() const override { return vera_->State(); }
  ado::RecordsetPtr Execute(std::string_view text) override { return vera_->Execute(text); }
  void BeginTrans() override { vera_->BeginTrans(); }
  void CommitTrans() override {
    primaDiConfermare_();
    if (prova_)
      vera_->RollbackTrans();
    else
      vera_->CommitTrans();
  }
  void RollbackTrans() override { vera_->RollbackTrans(); }

 private:
  ado::ConnectionPtr vera_;
  bool prova_;
  std::function<void()> primaDiConfermare_;
};

}  // namespace bukorval::host
