#include "frame/Identita.h"

#include <cstdint>
#include <exception>

#include "frame/Piattaforma.h"

namespace bukorval {

namespace {

/// Appends the number as upper-case hexadecimal digits, as many as its type is wide.
template <class Intero>
void aggiungiEsadecimale(std::string& testo, Intero valore) {
  for (int bit = static_cast<int>(sizeof valore) * 8 - 4; bit >= 0; bit -= 4)
    testo += "0123456789ABCDEF"[(std::uint32_t{valore} >> bit) & 0xF];
}

}  // namespace

std::string CreaGuidEsadecimale() {
  std::string testo;
  try {
    const piattaforma::Guid guid = piattaforma::nuovoGuid();
    aggiungiEsadecimale(testo, guid.parte1);
    aggiungiEsadecimale(testo, guid.parte2);
    aggiungiEsadecimale(testo, guid.parte3);
    for (const std::uint8_t byte : guid.finali) aggiungiEsadecimale(testo, byte);
  } catch (const std::exception&) {
    return {};
  }
  return testo;
}

const std::string& Identita::GetIdIstanza() {
  if (id_.empty()) id_ = CreaGuidEsadecimale();
  return id_;
}

}  // namespace bukorval
