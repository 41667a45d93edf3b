#pragma once

#include "ado/connection/Connection.h"
#include "com/Objects.h"
#include "com/foreign/Caller.h"

namespace com {

/// A client's connection as ours: text goes through its Execute, transactions through its own methods.
class ClientConnection : public ado::Connection, public ClientObject {
 public:
  explicit ClientConnection(Ref<IDispatch> object) : caller_(std::move(object)) {}

  IDispatch* client() const override { return caller_.get(); }

  void Open(std::string_view user, std::string_view password, std::int32_t options) override;
  void Close() override;
  ado::ObjectStateEnum State() const override;
  ado::RecordsetPtr Execute(std::string_view text) override;
  void BeginTrans() override;
  void CommitTrans() override;
  void RollbackTrans() override;

 private:
  Caller caller_;
};

}  // namespace com
