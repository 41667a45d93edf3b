#include "helper/Proxy.h"

#include "com/Counted.h"
#include "com/Objects.h"

namespace com_helper {
namespace {

class Proxy : public com::Counted<IDispatch> {
 public:
  explicit Proxy(com::Ref<IDispatch> object) : Counted(IID_IDispatch), object_(std::move(object)) {}

  STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override {
    return object_->GetIDsOfNames(id, names, count, locale, ids);
  }
  STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* argument) override {
    const auto outcome = object_->Invoke(id, iid, locale, flags, parameters, result, exception, argument);
    if (SUCCEEDED(outcome) && result && V_VT(result) == VT_DISPATCH && V_DISPATCH(result))
      V_DISPATCH(result) = proxyOf(com::Ref<IDispatch>::adopt(V_DISPATCH(result))).release();
    return outcome;
  }

 private:
  ~Proxy() override = default;
  com::Ref<IDispatch> object_;
};

}  // namespace

com::Ref<IDispatch> proxyOf(com::Ref<IDispatch> object) {
  return com::Ref<IDispatch>::adopt(new Proxy(std::move(object)));
}

}  // namespace com_helper
