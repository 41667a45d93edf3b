#pragma once

#include <cstddef>
#include <string_view>

#include "values/Text.h"

namespace bukorval {

/// Characters of an element's code in a structure string.
inline constexpr std::size_t kLarghezzaSlot = 3;

/// Visits the slots of a structure string from its first character on; the last one may be shorter.
template <class Visita>
void perOgniSlot(std::string_view struttura, Visita visita) {
  while (!struttura.empty()) {
    const auto slot = values::left(struttura, kLarghezzaSlot);
    visita(slot);
    struttura.remove_prefix(slot.size());
  }
}

/// The same without the blank slots.
template <class Visita>
void perOgniElemento(std::string_view struttura, Visita visita) {
  perOgniSlot(struttura, [&](std::string_view slot) {
    if (!values::trim(slot).empty()) visita(slot);
  });
}

}  // namespace bukorval
