#pragma once

#include "ado/recordset/Recordset.h"
#include "com/Objects.h"
#include "com/foreign/Caller.h"

namespace com {

/// The rows of a client's record set as they are now, all of them whatever its filter and position where it can be
/// cloned, and from its position on where it cannot.
ado::RecordsetPtr readRecordset(const Caller& set);

/// Puts the fields and rows of a set of ours into a client's, which is new and closed; both end on their first row.
void fillRecordset(const Caller& to, ado::Recordset& from);

/// A client's record set as ours. The client may change it at any time, so that each use reads it anew.
class ClientRecordset : public ado::Recordset, public ClientObject {
 public:
  explicit ClientRecordset(Ref<IDispatch> object);

  IDispatch* client() const override { return caller_.get(); }

 private:
  Caller caller_;
};

}  // namespace com
