#pragma once

#include <array>
#include <cstdint>
#include <string>

/// What the operating system gives. One source file a platform implements it.
namespace bukorval::piattaforma {

/// A globally unique identifier in its five parts, the last two together.
struct Guid {
  std::uint32_t parte1 = 0;
  std::uint16_t parte2 = 0;
  std::uint16_t parte3 = 0;
  std::array<std::uint8_t, 8> finali{};
};

/// Throws when the system has no randomness to give.
Guid nuovoGuid();

/// Writes one line to the developer's debug channel.
void canaleDebug(const std::string& riga);

}  // namespace bukorval::piattaforma
