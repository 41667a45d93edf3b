#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "values/Int128.h"

/// Whole numbers of up to 38 digits, the units of exact decimals (value × 10^scale).
namespace engine {

using values::Int128;

inline constexpr int kMaxDigits = 38;
/// So many digits always fit 64 bits.
inline constexpr int kWordDigits = 18;

struct Scaled {
  Int128 units = 0;
  int scale = 0;
};

/// 10^exponent, exponent 0 to 38.
Int128 powerOfTen(int exponent);
/// Decimal digits of the absolute value; 1 for zero.
int digitCount(Int128 value);

/// Reads blanks, a sign, digits with at most one point, blanks. Nothing when it is anything else or too long.
std::optional<Scaled> parseScaled(std::string_view text);
/// Reads a sign and digits.
std::optional<Int128> parseUnits(std::string_view text);
std::string unitsToText(Int128 units);
/// With the point put in: unitsToPlainText(-5, 2) is "-0.05".
std::string unitsToPlainText(Int128 units, int scale);

/// The same value at another scale, rounded half away from zero when digits go; nothing beyond 38 digits.
std::optional<Int128> rescale(Int128 units, int from, int to);
/// numerator / denominator, rounded half away from zero.
Int128 divideRounded(Int128 numerator, Int128 denominator);

std::optional<Int128> addChecked(Int128 a, Int128 b);
std::optional<Int128> multiplyChecked(Int128 a, Int128 b);

inline bool fitsInt64(Int128 value) { return value >= INT64_MIN && value <= INT64_MAX; }

}  // namespace engine
