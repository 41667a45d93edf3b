#pragma once

#include <cassert>

#include "values/Decimal.h"
#include "values/Errore.h"
#include "values/WideInteger.h"

namespace values {

/// A decimal taken apart: sign, magnitude, scale. The one way in and out of Decimal for this folder's code.
struct DecimalParts {
  Uint128 magnitude = 0;
  int scale = 0;
  bool negative = false;

  static DecimalParts of(const Decimal& d) { return {Uint128{d.hi_} << 64 | d.lo_, d.scale_, d.negative_}; }

  /// Magnitude below 2^96, scale 0 to 28. Zero has no sign.
  Decimal build() const {
    assert(magnitude <= kMaxMagnitude && scale >= 0 && scale <= Decimal::kMaxScale);
    Decimal d;
    d.lo_ = static_cast<std::uint64_t>(magnitude);
    d.hi_ = static_cast<std::uint32_t>(magnitude >> 64);
    d.scale_ = static_cast<std::uint8_t>(scale);
    d.negative_ = negative && magnitude != 0;
    return d;
  }

  /// Makes a decimal of a result of any width, dropping digits of the fraction until it fits. Only the first
  /// dropped digit decides the rounding, so digits may be dropped one at a time.
  /// @param dropped  the digit that was cut off before this call; 0 when none was.
  static Decimal fit(Uint192 value, int scale, bool negative, unsigned dropped = 0) {
    assert(scale >= 0 && dropped < 10);
    const auto drop = [&] {
      if (scale == 0) throw Errore("Overflow");
      dropped = value.dropDigit();
      --scale;
    };
    while (scale > Decimal::kMaxScale || !value.fits96()) drop();
    Uint128 magnitude = value.low128();
    if (dropped >= 5 && magnitude == kMaxMagnitude) {
      drop();
      magnitude = value.low128();
    }
    return DecimalParts{magnitude + (dropped >= 5 ? 1U : 0U), scale, negative}.build();
  }
};

}  // namespace values
