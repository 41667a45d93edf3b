#pragma once

#include <deque>

#include "ado/connection/Connection.h"
#include "support/Test.h"

namespace testing_support {

/// A connection that keeps the texts it is sent and answers with prepared sets: for tests of the exact text.
class RecordingConnection : public ado::Connection {
 public:
  std::vector<std::string> texts;
  /// Answers in order of the calls; a call without one gets a closed set.
  std::deque<ado::RecordsetPtr> answers;
  /// When set, called with each text before it is answered; it may throw.
  std::function<void(std::string_view)> onExecute;

  void Open(std::string_view = {}, std::string_view = {}, std::int32_t = -1) override { ++opened; }
  void Close() override {}
  ado::ObjectStateEnum State() const override { return ado::adStateOpen; }
  ado::RecordsetPtr Execute(std::string_view text) override {
    texts.emplace_back(text);
    if (onExecute) onExecute(text);
    if (answers.empty()) return std::make_shared<ado::Recordset>();
    auto answer = answers.front();
    answers.pop_front();
    return answer;
  }
  void BeginTrans() override { texts.emplace_back("BeginTrans"); }
  void CommitTrans() override { texts.emplace_back("CommitTrans"); }
  void RollbackTrans() override { texts.emplace_back("RollbackTrans"); }

  int opened = 0;
};

/// A set with the given fields (adVariant) and rows, on its first row.
ado::RecordsetPtr rows(const std::vector<std::string>& fields, const std::vector<std::vector<values::Variant>>& values);

}  // namespace testing_support
