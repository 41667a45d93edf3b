#ifndef _WIN32

#include <syslog.h>

#include <random>

#include "frame/Piattaforma.h"

namespace bukorval::piattaforma {

Guid nuovoGuid() {
  std::random_device caso;
  const auto parola = [&] { return static_cast<std::uint32_t>(caso()); };
  Guid guid;
  guid.parte1 = parola();
  const std::uint32_t mezzo = parola();
  guid.parte2 = static_cast<std::uint16_t>(mezzo >> 16);
  // Version 4 and the variant bits say that the identifier is random.
  guid.parte3 = static_cast<std::uint16_t>((mezzo & 0x0FFF) | 0x4000);
  std::uint64_t coda = std::uint64_t{parola()} << 32 | parola();
  for (std::uint8_t& byte : guid.finali) {
    byte = static_cast<std::uint8_t>(coda);
    coda >>= 8;
  }
  guid.finali[0] = static_cast<std::uint8_t>((guid.finali[0] & 0x3F) | 0x80);
  return guid;
}

void canaleDebug(const std::string& riga) { syslog(LOG_DEBUG | LOG_USER, "%s", riga.c_str()); }

}  // namespace bukorval::piattaforma

#endif
