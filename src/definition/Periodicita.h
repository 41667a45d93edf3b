#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>

#include "frame/Enumerazioni.h"

namespace bukorval {

/// How a periodicity splits the year.
struct Periodicita {
  std::int16_t periodi;  ///< per year
  std::int16_t mesi;     ///< per period
  int messaggio;         ///< catalogue number of the period word; 0 where periods bear month names
};

inline constexpr Periodicita kPeriodicita[] = {{12, 1, 0},    {6, 2, 8824},  {4, 3, 58700},
                                               {3, 4, 46968}, {2, 6, 51899}, {1, 12, 6537}};

inline constexpr BdgPeriodicita kMensile = 0;
inline constexpr BdgPeriodicita kAnnuale = 5;

/// Null pointer for a code that does not exist.
inline const Periodicita* periodicita(BdgPeriodicita codice) {
  const auto posizione = static_cast<std::size_t>(codice);
  return posizione < std::size(kPeriodicita) ? &kPeriodicita[posizione] : nullptr;
}

}  // namespace bukorval
