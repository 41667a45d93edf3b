#pragma once

#include <string>

#include "com/Com.h"

namespace com {

/// For whom the classes are known: for this user, which takes no further rights, or for all, which takes those of an
/// administrator.
enum class Scope { User, Machine };

/// Both give the system's outcome.
HRESULT registerClasses(Scope scope);
HRESULT unregisterClasses(Scope scope);

/// Where the machine has a data-access library of its own: the name of its record set class, which clients are then
/// handed instead of ours. "" takes that back.
HRESULT clientRecordsetClass(const std::wstring& name);
/// The name as it stood when the library was loaded; "" for none.
const std::wstring& clientRecordsetClass();
/// A new object of that class. Throws values::Errore.
Ref<IDispatch> createClientRecordset();

}  // namespace com
