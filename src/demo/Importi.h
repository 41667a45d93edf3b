#pragma once

#include <array>
#include <cstdint>

#include "values/Decimal.h"

/// Amounts of the demo company, in cents, the same at every run.
namespace demo {

using Centesimi = std::int64_t;
using Mesi = std::array<Centesimi, 12>;

/// How an amount of a year falls on its months, in thousandths.
using Stagione = std::array<int, 12>;
inline constexpr Stagione kCostante{83, 83, 84, 83, 83, 84, 83, 83, 84, 83, 83, 84};
inline constexpr Stagione kInvernale{130, 125, 105, 80, 60, 50, 45, 40, 55, 80, 110, 120};
inline constexpr Stagione kSemestrale{500, 0, 0, 0, 0, 0, 500, 0, 0, 0, 0, 0};
inline constexpr Stagione kTrimestrale{250, 0, 0, 250, 0, 0, 250, 0, 0, 250, 0, 0};
inline constexpr Stagione kFiere{0, 80, 250, 120, 0, 0, 0, 0, 150, 300, 100, 0};
inline constexpr Stagione kConAgosto{92, 92, 92, 92, 92, 92, 80, 20, 92, 92, 92, 72};
inline constexpr Stagione kMensilita{71, 71, 71, 72, 71, 143, 71, 72, 71, 72, 72, 143};

/// The twelve parts add up to the whole.
inline Mesi ripartisci(Centesimi annuo, const Stagione& stagione) {
  Mesi mesi{};
  Centesimi dati = 0;
  std::size_t ultimo = 0;
  for (std::size_t m = 0; m < mesi.size(); ++m) {
    mesi[m] = annuo * stagione[m] / 1000;
    dati += mesi[m];
    if (stagione[m] != 0) ultimo = m;
  }
  mesi[ultimo] += annuo - dati;
  return mesi;
}

inline Centesimi percento(Centesimi importo, int percentuale) { return importo * percentuale / 100; }
/// A budget is made in tens.
inline Centesimi aDecine(Centesimi importo) { return importo / 1000 * 1000; }
inline values::Decimal euro(Centesimi importo) { return values::Decimal::FromScaled(importo, 2); }

/// Numbers that look like chance.
class Caso {
 public:
  int tra(int minimo, int massimo) {
    stato_ = stato_ * 1664525u + 1013904223u;
    return minimo + static_cast<int>((stato_ >> 8) % static_cast<std::uint32_t>(massimo - minimo + 1));
  }

 private:
  std::uint32_t stato_ = 20250101u;
};

}  // namespace demo
