#include "com/foreign/Caller.h"

#include "com/Failures.h"
#include "com/Objects.h"
#include "com/VariantValue.h"
#include "values/WideText.h"

namespace com {
namespace {

/// The texts of an exception, which are ours to free.
struct ExceptionTexts : EXCEPINFO {
  ExceptionTexts() : EXCEPINFO{} {}
  ~ExceptionTexts() {
    ::SysFreeString(bstrSource);
    ::SysFreeString(bstrDescription);
    ::SysFreeString(bstrHelpFile);
  }
};

[[noreturn]] void fail(HRESULT outcome, const wchar_t* member, ExceptionTexts& exception) {
  if (outcome == DISP_E_EXCEPTION && exception.pfnDeferredFillIn) exception.pfnDeferredFillIn(&exception);
  const bool described = outcome == DISP_E_EXCEPTION && exception.bstrDescription;
  const auto code = outcome == DISP_E_EXCEPTION && FAILED(exception.scode) ? exception.scode : outcome;
  throw ClientFailure(FAILED(code) ? code : E_FAIL,
                      described ? values::fromWide(exception.bstrDescription)
                                : "The client's object failed in " + values::fromWide(member ? member : L"its value"));
}

OleVariant invokeOn(IDispatch* object, DISPID id, WORD flags, DISPPARAMS& parameters, const wchar_t* member) {
  OleVariant result;
  ExceptionTexts exception;
  const bool writes = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  const auto outcome = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, writes ? nullptr : &result,
                                      &exception, nullptr);
  if (FAILED(outcome)) fail(outcome, member, exception);
  return result;
}

}  // namespace

DISPID Caller::idOf(const wchar_t* member) const {
  const auto known = ids_.find(member);
  if (known != ids_.end()) return known->second;
  DISPID id = DISPID_UNKNOWN;
  auto* name = const_cast<wchar_t*>(member);
  if (const auto outcome = object_->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id); FAILED(outcome))
    throw ClientFailure(outcome, "The client's object has no " + values::fromWide(member));
  return ids_[member] = id;
}

bool Caller::has(const wchar_t* member) const {
  DISPID id = DISPID_UNKNOWN;
  auto* name = const_cast<wchar_t*>(member);
  return SUCCEEDED(object_->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id));
}

OleVariant Caller::invoke(const wchar_t* member, WORD flags, DISPPARAMS& parameters) const {
  return invokeOn(object_.get(), idOf(member), flags, parameters, member);
}

OleVariant Caller::call(const wchar_t* member, std::vector<OleVariant> arguments) const {
  std::vector<VARIANT> reversed;
  for (auto each = arguments.rbegin(); each != arguments.rend(); ++each) reversed.push_back(each->get());
  DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
  return invoke(member, DISPATCH_METHOD | DISPATCH_PROPERTYGET, parameters);
}

void Caller::put(const wchar_t* member, OleVariant value) const {
  DISPID name = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{&value, &name, 1, 1};
  invoke(member, DISPATCH_PROPERTYPUT, parameters);
}

values::Variant Caller::value(const wchar_t* member, std::vector<OleVariant> arguments) const {
  try {
    return toValue(call(member, std::move(arguments)).get());
  } catch (const CallFailure& failure) {
    throw ClientFailure(failure.code, "Type mismatch: " + values::fromWide(member) + " of the client's object");
  }
}

Caller Caller::object(const wchar_t* member, std::vector<OleVariant> arguments) const {
  auto object = dispatchOf(call(member, std::move(arguments)).get());
  if (!object)
    throw ClientFailure(DISP_E_TYPEMISMATCH, values::fromWide(member) + " of the client's object is no object");
  return Caller(std::move(object));
}

values::Variant defaultValue(IDispatch* object) {
  DISPPARAMS none{};
  OleVariant result;
  if (FAILED(object->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &result, nullptr,
                            nullptr)))
    throw CallFailure{DISP_E_TYPEMISMATCH};
  // A property that is an object again, perhaps the same one, is no value.
  if (dispatchOf(result.get())) throw CallFailure{DISP_E_TYPEMISMATCH};
  return toValue(result.get());
}

}  // namespace com
