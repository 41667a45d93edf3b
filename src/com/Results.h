#pragma once

#include "com/Objects.h"
#include "com/VariantValue.h"

/// Results of members.
namespace com {

inline OleVariant dispatchValue(Ref<IDispatch> object) {
  OleVariant result;
  V_DISPATCH(&result.get()) = object.release();
  V_VT(&result.get()) = VT_DISPATCH;
  return result;
}

/// A value of ours, whatever it is made from.
template <class T>
OleVariant valueOf(T&& value) {
  return fromValue(values::Variant(std::forward<T>(value)));
}

}  // namespace com
