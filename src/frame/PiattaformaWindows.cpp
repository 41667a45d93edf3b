#ifdef _WIN32

#include <objbase.h>
#include <windows.h>

#include <algorithm>

#include "frame/Piattaforma.h"
#include "values/Errore.h"
#include "values/WideText.h"

namespace bukorval::piattaforma {

Guid nuovoGuid() {
  UUID nuovo{};
  if (const auto esito = ::CoCreateGuid(&nuovo); FAILED(esito)) throw values::Errore("The system gives no identifier");
  Guid guid{static_cast<std::uint32_t>(nuovo.Data1), nuovo.Data2, nuovo.Data3, {}};
  std::ranges::copy(nuovo.Data4, guid.finali.begin());
  return guid;
}

void canaleDebug(const std::string& riga) { ::OutputDebugStringW((values::toWide(riga) + L"\n").c_str()); }

}  // namespace bukorval::piattaforma

#endif
