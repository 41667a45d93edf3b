#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "values/Export.h"

namespace values {

/// An exact decimal number: a sign, a 96-bit integer and a scale from 0 to 28
/// (28 significant digits always fit). Sixteen bytes, cheap to copy.
/// Arithmetic is exact where the result fits and rounds half away from zero at the last
/// digit where it does not; a result too large throws Errore "Overflow".
class BUKORVAL_API Decimal {
 public:
  static constexpr int kMaxScale = 28;

  constexpr Decimal() = default;

  /// units × 10^-scale: FromScaled(12345, 2) is 123.45. Scale 0 to 28.
  static Decimal FromScaled(std::int64_t units, int scale = 0);

  /// The shortest decimal with up to 15 significant digits that stands for the double.
  /// Throws "Overflow" when out of range or not finite.
  static Decimal FromDouble(double value);

  /// Reads "-123.45" or "1.5E3"; point only, no blanks, no grouping. Nothing when it is no number;
  /// digits beyond what fits are rounded, a number too large throws "Overflow".
  static std::optional<Decimal> TryParse(std::string_view text);

  int scale() const { return scale_; }
  bool isZero() const { return hi_ == 0 && lo_ == 0; }
  bool isNegative() const { return negative_ && !isZero(); }

  /// value × 10^scale as an integer; nothing when digits would be lost or it does not fit.
  std::optional<std::int64_t> toScaled(int scale) const;

  /// Rounded half away from zero to `digits` decimals (not negative); a scale already smaller is kept.
  Decimal rounded(int digits) const;
  /// Number of digits before the decimal point; 0 for values below 1.
  int integerDigits() const;

  /// Plain notation with a point, trailing zeros of the scale kept: "-0.50".
  std::string toString() const;
  double toDouble() const;
  /// The same value with no trailing zeros in its fraction.
  Decimal normalized() const;

  Decimal operator-() const;
  friend BUKORVAL_API Decimal operator+(const Decimal& a, const Decimal& b);
  friend BUKORVAL_API Decimal operator-(const Decimal& a, const Decimal& b);
  friend BUKORVAL_API Decimal operator*(const Decimal& a, const Decimal& b);
  /// Throws "Division by zero".
  friend BUKORVAL_API Decimal operator/(const Decimal& a, const Decimal& b);
  /// By value: 1.0 equals 1.00.
  friend BUKORVAL_API std::strong_ordering operator<=>(const Decimal& a, const Decimal& b);
  friend bool operator==(const Decimal& a, const Decimal& b) { return (a <=> b) == 0; }

 private:
  friend struct DecimalParts;

  std::uint64_t lo_ = 0;
  std::uint32_t hi_ = 0;
  std::uint8_t scale_ = 0;
  bool negative_ = false;
};

}  // namespace values
