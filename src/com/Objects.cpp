#include "com/Objects.h"

#include "com/ConnectionObject.h"
#include "com/DictionaryObject.h"
#include "com/Failures.h"
#include "com/RecordsetObject.h"
#include "com/SessionObject.h"
#include "com/VariantValue.h"
#include "com/foreign/ClientConnection.h"
#include "com/foreign/ClientDictionary.h"
#include "com/foreign/ClientRecordset.h"
#include "com/foreign/ClientSession.h"

namespace com {
namespace {

using bukorval::TipoDato;
using ObjectPtr = std::shared_ptr<values::Object>;

/// The dispatch object for one of ours, where it is of the class T.
template <class T, class Dispatch>
Ref<IDispatch> wrapped(const ObjectPtr& object) {
  auto inside = std::dynamic_pointer_cast<T>(object);
  return inside ? Ref<IDispatch>::adopt(new Dispatch(std::move(inside))) : nullptr;
}

constexpr auto kWrappers = {&wrapped<ado::Recordset, RecordsetObject>, &wrapped<ado::Dictionary, DictionaryObject>,
                            &wrapped<ado::Connection, ConnectionObject>,
                            &wrapped<suite::ActiveInterface, SessionObject>};

template <class T>
ObjectPtr clientAs(Ref<IDispatch> object) {
  return std::make_shared<T>(std::move(object));
}

struct ClientClass {
  TipoDato type;
  ObjectPtr (*make)(Ref<IDispatch>);
};
constexpr ClientClass kClients[] = {{TipoDato::Recordset, clientAs<ClientRecordset>},
                                    {TipoDato::Dictionary, clientAs<ClientDictionary>},
                                    {TipoDato::Connection, clientAs<ClientConnection>},
                                    {TipoDato::ActiveInterface, clientAs<ClientSession>}};

/// What a VARIANT refers to as an object; null for Nothing and for what holds none.
IUnknown* unknownOf(const VARIANT& value) {
  switch (V_VT(&value)) {
    case VT_DISPATCH:
    case VT_UNKNOWN: return V_UNKNOWN(&value);
    case VT_BYREF | VT_DISPATCH:
    case VT_BYREF | VT_UNKNOWN: return V_UNKNOWNREF(&value) ? *V_UNKNOWNREF(&value) : nullptr;
    default: return nullptr;
  }
}

bool holdsObject(const VARIANT& value) {
  const auto type = V_VT(&value) & ~VT_BYREF;
  return type == VT_DISPATCH || type == VT_UNKNOWN;
}

}  // namespace

Ref<IDispatch> objectOf(const ObjectPtr& object) {
  if (!object) return nullptr;
  if (const auto* client = dynamic_cast<const ClientObject*>(object.get())) return Ref<IDispatch>(client->client());
  for (const auto wrapper : kWrappers)
    if (auto made = wrapper(object)) return made;
  return nullptr;
}

Ref<IDispatch> dispatchOf(const VARIANT& value) {
  return Ref<IDispatch>::from(unknownOf(dereferenced(value)), IID_IDispatch);
}

ObjectPtr insideOf(IDispatch* object) {
  const auto inside = Ref<IInside>::from(object, kInside);
  return inside ? inside->inside() : nullptr;
}

bool isObjectType(TipoDato type) {
  for (const auto& client : kClients)
    if (client.type == type) return true;
  return false;
}

values::Variant toObject(const VARIANT& value, TipoDato type) {
  const auto& plain = dereferenced(value);
  if (V_VT(&plain) == VT_EMPTY || isMissing(plain)) return ObjectPtr();
  if (!holdsObject(plain)) throw CallFailure{DISP_E_TYPEMISMATCH};
  const auto object = dispatchOf(plain);
  if (!object) {
    if (unknownOf(plain)) throw CallFailure{DISP_E_TYPEMISMATCH};
    return ObjectPtr();
  }
  if (auto inside = insideOf(object.get())) return inside;
  for (const auto& client : kClients)
    if (client.type == type) return client.make(object);
  throw CallFailure{DISP_E_TYPEMISMATCH};
}

}  // namespace com
