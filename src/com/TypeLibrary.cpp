#include "com/TypeLibrary.h"

#include "com/Module.h"

namespace com {

HRESULT typeLibrary(ITypeLib** library) { return ::LoadTypeLibEx(modulePath().c_str(), REGKIND_NONE, library); }

HRESULT typeInformation(REFGUID id, ITypeInfo** information) {
  Ref<ITypeLib> library;
  const auto outcome = typeLibrary(library.out());
  return FAILED(outcome) ? outcome : library->GetTypeInfoOfGuid(id, information);
}

}  // namespace com
