#include "com/Registration.h"

#include <array>
#include <vector>

#include "com/Classes.h"
#include "com/Module.h"
#include "com/idl/Identifiers.h"
#include "values/Errore.h"
#include "values/WideText.h"

namespace com {
namespace {

constexpr GUID kLibrary = BUKORVAL_LIBRARY;
constexpr GUID kInterfaces[] = {BUKORVAL_DISPATCH, BUKORVAL_EVENTS};
const std::array kInterfaceNames{L"_CLSKORVAL", L"__CLSKORVAL"};
constexpr const wchar_t* kVersion = L"1.0";
constexpr const wchar_t* kRecordsetClass = L"RecordsetClass";
/// The system's marshaller of dispatch interfaces.
constexpr const wchar_t* kDispatchProxy = L"{00020420-0000-0000-C000-000000000046}";
constexpr const wchar_t* kRoot = L"Software\\Classes\\";

std::wstring textOf(REFGUID id) {
  std::array<wchar_t, 39> text{};
  ::StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
  return text.data();
}

std::wstring classKey(REFGUID id) { return L"CLSID\\" + textOf(id); }

std::wstring libraryKey() { return L"TypeLib\\" + textOf(kLibrary); }
/// Where the file with the type library stands for programs of this width.
std::wstring libraryFileKey() {
  return libraryKey() + L"\\" + kVersion + (sizeof(void*) == 8 ? L"\\0\\win64" : L"\\0\\win32");
}

struct Key {
  std::wstring path;
  std::wstring value;
  const wchar_t* name = nullptr;  ///< of the value; null for the key's own
};

std::vector<Key> keysOf(const ClassEntry& entry, const std::wstring& file) {
  const auto key = classKey(entry.id);
  return {{key, entry.description},
          {key + L"\\InprocServer32", file},
          {key + L"\\InprocServer32", L"Apartment", L"ThreadingModel"},
          {key + L"\\ProgID", entry.name},
          {key + L"\\Programmable", {}},
          {key + L"\\TypeLib", textOf(kLibrary)},
          {key + L"\\Version", kVersion},
          {entry.name, entry.description},
          {std::wstring(entry.name) + L"\\CLSID", textOf(entry.id)}};
}

std::vector<Key> allKeys() {
  const auto file = modulePath();
  std::vector<Key> keys;
  for (const auto& entry : classes())
    for (auto& key : keysOf(entry, file)) keys.push_back(std::move(key));
  const auto library = libraryKey() + L"\\" + kVersion;
  keys.push_back({library, L"BUKORVAL"});
  keys.push_back({library + L"\\FLAGS", L"0"});
  keys.push_back({libraryFileKey(), file});
  for (std::size_t i = 0; i < std::size(kInterfaces); ++i) {
    const auto key = L"Interface\\" + textOf(kInterfaces[i]);
    keys.push_back({key, kInterfaceNames[i]});
    keys.push_back({key + L"\\ProxyStubClsid32", kDispatchProxy});
    keys.push_back({key + L"\\TypeLib", textOf(kLibrary)});
    keys.push_back({key + L"\\TypeLib", kVersion, L"Version"});
  }
  return keys;
}

HKEY rootOf(Scope scope) { return scope == Scope::Machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER; }

HRESULT write(Scope scope, const Key& key) {
  const auto size = static_cast<DWORD>((key.value.size() + 1) * sizeof(wchar_t));
  return HRESULT_FROM_WIN32(
      ::RegSetKeyValueW(rootOf(scope), (kRoot + key.path).c_str(), key.name, REG_SZ, key.value.c_str(), size));
}

HRESULT remove(Scope scope, const std::wstring& path) {
  const auto outcome = ::RegDeleteTreeW(rootOf(scope), (kRoot + path).c_str());
  return outcome == ERROR_FILE_NOT_FOUND ? S_OK : HRESULT_FROM_WIN32(outcome);
}

/// Whether the class is registered for programs of the other width too. They have classes of their own, but share their
/// names and the type library.
bool otherWidthHas(Scope scope, REFGUID id) {
  constexpr REGSAM kOther = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
  HKEY key = nullptr;
  if (::RegOpenKeyExW(rootOf(scope), (kRoot + classKey(id)).c_str(), 0, KEY_READ | kOther, &key) != ERROR_SUCCESS)
    return false;
  ::RegCloseKey(key);
  return true;
}

std::wstring readRecordsetClass() {
  std::array<wchar_t, 256> name{};
  DWORD size = sizeof(name);
  const auto key = kRoot + classKey(classes().front().id);
  const auto outcome =
      ::RegGetValueW(HKEY_CURRENT_USER, key.c_str(), kRecordsetClass, RRF_RT_REG_SZ, nullptr, name.data(), &size);
  return outcome == ERROR_SUCCESS ? std::wstring(name.data()) : std::wstring();
}

}  // namespace

HRESULT registerClasses(Scope scope) {
  for (const auto& key : allKeys())
    if (const auto outcome = write(scope, key); FAILED(outcome)) {
      unregisterClasses(scope);
      return outcome;
    }
  return S_OK;
}

HRESULT unregisterClasses(Scope scope) {
  HRESULT first = S_OK;
  const auto removing = [&](const std::wstring& path) {
    if (const auto outcome = remove(scope, path); FAILED(outcome) && SUCCEEDED(first)) first = outcome;
  };
  bool shared = false;
  for (const auto& entry : classes()) {
    removing(classKey(entry.id));
    if (otherWidthHas(scope, entry.id))
      shared = true;
    else
      removing(entry.name);
  }
  removing(shared ? libraryFileKey() : libraryKey());
  for (const auto& id : kInterfaces) removing(L"Interface\\" + textOf(id));
  return first;
}

HRESULT clientRecordsetClass(const std::wstring& name) {
  return write(Scope::User, {classKey(classes().front().id), name, kRecordsetClass});
}

const std::wstring& clientRecordsetClass() {
  static const std::wstring name = readRecordsetClass();
  return name;
}

Ref<IDispatch> createClientRecordset() {
  CLSID id{};
  Ref<IDispatch> made;
  auto outcome = ::CLSIDFromProgID(clientRecordsetClass().c_str(), &id);
  if (SUCCEEDED(outcome))
    outcome =
        ::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, reinterpret_cast<void**>(made.out()));
  if (FAILED(outcome)) throw values::Errore("Cannot create a " + values::fromWide(clientRecordsetClass()));
  return made;
}

}  // namespace com
