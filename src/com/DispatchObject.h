#pragma once

#include <atomic>
#include <memory>

#include "com/Arguments.h"
#include "com/MemberTable.h"
#include "values/Variant.h"

namespace com {

/// How an object of this library knows another one of them: what stands behind it. It has no proxy, so an object of
/// another apartment is a client's object like any other.
struct IInside : IUnknown {
  virtual std::shared_ptr<values::Object> STDMETHODCALLTYPE inside() = 0;
};
extern const IID kInside;

/// An object that is called by names. A class gives its table and does what a member of it says; no exception crosses
/// the boundary.
class DispatchObject : public IDispatch, public ISupportErrorInfo, public IInside {
 public:
  DispatchObject();
  DispatchObject(const DispatchObject&) = delete;
  DispatchObject& operator=(const DispatchObject&) = delete;

  STDMETHODIMP QueryInterface(REFIID id, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;

  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** information) override;
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* argument) override;

  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID id) override;

  std::shared_ptr<values::Object> STDMETHODCALLTYPE inside() override { return nullptr; }

 protected:
  virtual ~DispatchObject();

  virtual const MemberTable& members() const = 0;
  /// @param member  its place in the table; `flags` is what it allows.
  virtual OleVariant invoke(std::size_t member, WORD flags, Arguments& arguments) = 0;
  /// Further interfaces; null for one that the object does not have.
  virtual void* further(REFIID) { return nullptr; }
  /// The dispatch interface by its type library, IID_NULL for one that is not in it.
  virtual IID dispatchInterface() const { return IID_NULL; }

 private:
  /// The object that is a property's value; null for Nothing.
  Ref<IDispatch> objectIn(std::size_t member);

  std::atomic<ULONG> references_{1};
};

/// Makes an object with one reference.
template <class T, class... A>
Ref<T> make(A&&... arguments) {
  return Ref<T>::adopt(new T(std::forward<A>(arguments)...));
}

}  // namespace com
