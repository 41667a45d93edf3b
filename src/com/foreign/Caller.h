#pragma once

#include <map>
#include <vector>

#include "com/Com.h"
#include "values/Variant.h"

namespace com {

/// Calls a client's object by names, as a script would. What the object answers with an error throws ClientFailure
/// with its description.
class Caller {
 public:
  explicit Caller(Ref<IDispatch> object) : object_(std::move(object)) {}

  OleVariant call(const wchar_t* member, std::vector<OleVariant> arguments = {}) const;
  void put(const wchar_t* member, OleVariant value) const;
  /// The result as a plain value.
  values::Variant value(const wchar_t* member, std::vector<OleVariant> arguments = {}) const;
  /// The result as an object; throws ClientFailure when it is none.
  Caller object(const wchar_t* member, std::vector<OleVariant> arguments = {}) const;
  bool has(const wchar_t* member) const;

  IDispatch* get() const { return object_.get(); }
  const Ref<IDispatch>& ref() const { return object_; }

 private:
  DISPID idOf(const wchar_t* member) const;
  OleVariant invoke(const wchar_t* member, WORD flags, DISPPARAMS& parameters) const;

  Ref<IDispatch> object_;
  mutable std::map<std::wstring, DISPID> ids_;
};

/// The default property of an object as a plain value.
values::Variant defaultValue(IDispatch* object);

}  // namespace com
