#pragma once

#include "com/Com.h"

/// The type library that lies in this library.
namespace com {

HRESULT typeLibrary(ITypeLib** library);
/// What it says of a class or interface.
HRESULT typeInformation(REFGUID id, ITypeInfo** information);

}  // namespace com
