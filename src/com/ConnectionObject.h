#pragma once

#include "ado/connection/Connection.h"
#include "com/TableObject.h"

namespace com {

/// A connection under the names that a data-access client knows.
class ConnectionObject : public TableObject<ConnectionObject> {
 public:
  explicit ConnectionObject(ado::ConnectionPtr connection) : connection_(std::move(connection)) {}
  ~ConnectionObject() override = default;
  static std::span<const Entry<ConnectionObject>> entries();
  std::shared_ptr<values::Object> STDMETHODCALLTYPE inside() override { return connection_; }

 private:
  ado::ConnectionPtr connection_;
};

}  // namespace com
