#include "com/DispatchObject.h"

#include "com/Failures.h"
#include "com/Module.h"
#include "com/Objects.h"
#include "com/TypeLibrary.h"
#include "values/WideText.h"

namespace com {

const IID kInside = {0x6e0fa9f1, 0x27b1, 0x4c0c, {0x9b, 0x53, 0x0d, 0x3c, 0x1f, 0x77, 0x52, 0x11}};

DispatchObject::DispatchObject() { addLiving(); }
DispatchObject::~DispatchObject() { dropLiving(); }

STDMETHODIMP DispatchObject::QueryInterface(REFIID id, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  const auto own = dispatchInterface();
  if (IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IDispatch) ||
      (!IsEqualIID(own, IID_NULL) && IsEqualIID(id, own)))
    *object = static_cast<IDispatch*>(this);
  else if (IsEqualIID(id, IID_ISupportErrorInfo))
    *object = static_cast<ISupportErrorInfo*>(this);
  else if (IsEqualIID(id, kInside))
    *object = static_cast<IInside*>(this);
  else
    *object = further(id);
  if (!*object) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

STDMETHODIMP_(ULONG) DispatchObject::AddRef() { return ++references_; }

STDMETHODIMP_(ULONG) DispatchObject::Release() {
  const auto left = --references_;
  if (left == 0) {
    // What the end of the object calls may take a passing reference to it.
    references_ = 1;
    delete this;
  }
  return left;
}

STDMETHODIMP DispatchObject::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = IsEqualIID(dispatchInterface(), IID_NULL) ? 0 : 1;
  return S_OK;
}

STDMETHODIMP DispatchObject::GetTypeInfo(UINT index, LCID, ITypeInfo** information) {
  if (!information) return E_POINTER;
  *information = nullptr;
  if (index != 0 || IsEqualIID(dispatchInterface(), IID_NULL)) return DISP_E_BADINDEX;
  return typeInformation(dispatchInterface(), information);
}

STDMETHODIMP DispatchObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) try {
  if (!names || !ids || count == 0) return E_INVALIDARG;
  std::fill_n(ids, count, DISPID_UNKNOWN);
  const auto member = members().byName(names[0]);
  if (member == MemberTable::kNone) return DISP_E_UNKNOWNNAME;
  const auto& info = members()[member];
  ids[0] = info.id;
  HRESULT outcome = S_OK;
  for (UINT i = 1; i < count; ++i) {
    for (std::size_t place = 0; place < info.parameters.size(); ++place)
      if (foldName(info.parameters[place]) == foldName(names[i])) ids[i] = static_cast<DISPID>(place);
    if (ids[i] == DISPID_UNKNOWN) outcome = DISP_E_UNKNOWNNAME;
  }
  return outcome;
} catch (...) {
  return reportFailure(nullptr, nullptr, {});
}

STDMETHODIMP DispatchObject::Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                                    EXCEPINFO* exception, UINT* argument) {
  if (result) ::VariantInit(result);
  if (!parameters) return E_INVALIDARG;
  const Ref<IDispatch> alive(this);
  try {
    const auto member = members().byId(id);
    if (member == MemberTable::kNone) return DISP_E_MEMBERNOTFOUND;
    const auto& info = members()[member];
    const bool assigns = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    // budget.ElencoSedi(1): the arguments are those of the value's own default member.
    if (info.givesObject && parameters->cArgs > (assigns ? 1u : 0u)) {
      const auto object = objectIn(member);
      if (!object) throw values::Errore(kNoObject + (": " + values::fromWide(info.name)));
      return object->Invoke(DISPID_VALUE, IID_NULL, locale, flags, parameters, result, exception, argument);
    }
    if (assigns ? !info.writes : !info.reads) return DISP_E_MEMBERNOTFOUND;
    Arguments arguments(info, flags, *parameters);
    auto answer = invoke(member, flags, arguments);
    if (result) *result = answer.release();
    return S_OK;
  } catch (...) {
    return reportFailure(exception, argument, *parameters);
  }
}

Ref<IDispatch> DispatchObject::objectIn(std::size_t member) {
  DISPPARAMS none{};
  Arguments arguments(members()[member], DISPATCH_PROPERTYGET, none);
  return dispatchOf(invoke(member, DISPATCH_PROPERTYGET, arguments).get());
}

STDMETHODIMP DispatchObject::InterfaceSupportsErrorInfo(REFIID id) {
  return IsEqualIID(id, IID_IDispatch) ||
                 (!IsEqualIID(dispatchInterface(), IID_NULL) && IsEqualIID(id, dispatchInterface()))
             ? S_OK
             : S_FALSE;
}

}  // namespace com
