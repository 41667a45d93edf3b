#pragma once

#include <memory>

#include "com/Com.h"
#include "object/Interfaccia.h"
#include "values/Variant.h"

/// Our objects as dispatch objects, and back; objects of clients as ours.
namespace com {

/// A client's object that stands behind one of our interfaces.
class ClientObject {
 public:
  virtual ~ClientObject() = default;
  /// The object as the client gave it.
  virtual IDispatch* client() const = 0;
};

/// Null for Nothing. A client's object comes back as that very object.
Ref<IDispatch> objectOf(const std::shared_ptr<values::Object>& object);
/// The object that a VARIANT holds, by reference too; null for none.
Ref<IDispatch> dispatchOf(const VARIANT& value);
/// What stands behind a dispatch object of ours, null for a client's.
std::shared_ptr<values::Object> insideOf(IDispatch* object);

/// An argument or new value for a member that wants an object of a type: ours, or a client's seen through its dispatch
/// interface; a Variant without object for Nothing. Throws CallFailure where it is no object.
values::Variant toObject(const VARIANT& value, bukorval::TipoDato type);
bool isObjectType(bukorval::TipoDato type);

}  // namespace com
