#pragma once

#include "ado/Dictionary.h"
#include "com/Objects.h"
#include "com/foreign/Caller.h"

namespace com {

/// A client's dictionary as ours. The client may change it at any time, so it is read before each use; what the use
/// changed is written back.
class ClientDictionary : public ado::Dictionary, public ClientObject {
 public:
  explicit ClientDictionary(Ref<IDispatch> object) : caller_(std::move(object)) { read(); }

  IDispatch* client() const override { return caller_.get(); }
  void read();
  void writeBack();

 private:
  Caller caller_;
  std::vector<values::Variant> keys_, items_;  ///< as they were read
};

}  // namespace com
