#pragma once

#include <memory>

#include "com/DispatchObject.h"
#include "com/Events.h"
#include "object/Interfaccia.h"

namespace com {

/// The budget object for late-bound clients. Every member comes from the table of the interface.
class BudgetObject : public DispatchObject, public EventSource, public IProvideClassInfo2 {
 public:
  BudgetObject();

  STDMETHODIMP QueryInterface(REFIID id, void** object) override { return DispatchObject::QueryInterface(id, object); }
  STDMETHODIMP_(ULONG) AddRef() override { return DispatchObject::AddRef(); }
  STDMETHODIMP_(ULONG) Release() override { return DispatchObject::Release(); }

  STDMETHODIMP GetClassInfo(ITypeInfo** information) override;
  STDMETHODIMP GetGUID(DWORD kind, GUID* id) override;

 protected:
  ~BudgetObject() override;
  const MemberTable& members() const override;
  OleVariant invoke(std::size_t member, WORD flags, Arguments& arguments) override;
  void* further(REFIID id) override;
  IID dispatchInterface() const override;

 private:
  OleVariant read(const bukorval::Membro& member);
  void write(const bukorval::Membro& member, const VARIANT& value);
  OleVariant call(const bukorval::Membro& member, Arguments& arguments);
  /// Reads the record sets and dictionaries of the client anew, which stand in properties.
  void readClients();
  /// A record set as the clients of this machine want it.
  values::Variant handedOut(const bukorval::Membro& member, values::Variant set);
  void connectEvents();

  bukorval::CLSKORVAL budget_;
  bool hasClients_ = false;  ///< a client's own record set or dictionary stands in a property
};

}  // namespace com
