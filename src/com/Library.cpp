/// What the system calls of the library.
#include <algorithm>
#include <new>

#include "com/Classes.h"
#include "com/Counted.h"
#include "com/Registration.h"

namespace com {
namespace {

/// Makes objects of one class.
class ClassFactory : public Counted<IClassFactory> {
 public:
  explicit ClassFactory(const ClassEntry& entry) : Counted(IID_IClassFactory), entry_(entry) {}

  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** object) override try {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    return entry_.create()->QueryInterface(id, object);
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_UNEXPECTED;
  }
  STDMETHODIMP LockServer(BOOL lock) override {
    lock ? addLiving() : dropLiving();
    return S_OK;
  }

 private:
  const ClassEntry& entry_;
};

HRESULT classObject(REFCLSID id, REFIID interfaceId, void** object) try {
  if (!object) return E_POINTER;
  *object = nullptr;
  const auto found = std::ranges::find_if(classes(), [&](const auto& entry) { return IsEqualCLSID(entry.id, id); });
  if (found == classes().end()) return CLASS_E_CLASSNOTAVAILABLE;
  return Ref<ClassFactory>::adopt(new ClassFactory(*found))->QueryInterface(interfaceId, object);
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT guarded(HRESULT (*action)(Scope), Scope scope) try { return action(scope); } catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

}  // namespace
}  // namespace com

STDAPI DllGetClassObject(REFCLSID id, REFIID interfaceId, void** object) {
  return com::classObject(id, interfaceId, object);
}

STDAPI DllCanUnloadNow() { return com::hasLiving() ? S_FALSE : S_OK; }

STDAPI DllRegisterServer() { return com::guarded(com::registerClasses, com::Scope::User); }

STDAPI DllUnregisterServer() { return com::guarded(com::unregisterClasses, com::Scope::User); }

/// `regsvr32 /n /i:machine` registers for every user (`/u` takes it back), `regsvr32 /n /i:recordset=NAME` names the
/// record set class that clients are handed.
STDAPI DllInstall(BOOL install, PCWSTR text) try {
  constexpr std::wstring_view kMachine = L"machine", kRecordset = L"recordset=";
  const std::wstring_view wish = text ? text : L"";
  if (wish == kMachine)
    return com::guarded(install ? com::registerClasses : com::unregisterClasses, com::Scope::Machine);
  if (wish.starts_with(kRecordset))
    return com::clientRecordsetClass(install ? std::wstring(wish.substr(kRecordset.size())) : std::wstring());
  return E_INVALIDARG;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

extern "C" BOOL WINAPI DllMain(HINSTANCE handle, DWORD reason, void*) {
  if (reason == DLL_PROCESS_ATTACH) {
    com::moduleHandle(handle);
    ::DisableThreadLibraryCalls(handle);
  }
  return TRUE;
}
