#pragma once

#include "com/TableObject.h"
#include "suite/ActiveInterface.h"

namespace com {

/// A session of the suite: one that is opened on a connection, or one that stands already.
class SessionObject : public TableObject<SessionObject> {
 public:
  explicit SessionObject(suite::ActiveInterfacePtr session = nullptr) : session_(std::move(session)) {}
  ~SessionObject() override = default;
  static std::span<const Entry<SessionObject>> entries();
  std::shared_ptr<values::Object> STDMETHODCALLTYPE inside() override { return session_; }

 private:
  /// Throws when it was not opened.
  suite::ActiveInterface& opened() const;
  OleVariant open(Arguments& arguments);

  suite::ActiveInterfacePtr session_;
};

}  // namespace com
