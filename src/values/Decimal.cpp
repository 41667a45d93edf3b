#include "values/Decimal.h"

#include "values/DecimalParts.h"

namespace values {

namespace {

bool isSmall(Uint128 magnitude) { return magnitude >> 64 == 0; }

/// Digits a 64-bit magnitude can be scaled up by without leaving 127 bits.
constexpr int kQuickDigits = 18;

Decimal sum(const DecimalParts& a, const DecimalParts& b) {
  const DecimalParts& coarse = a.scale < b.scale ? a : b;
  const DecimalParts& fine = a.scale < b.scale ? b : a;
  const int digits = fine.scale - coarse.scale;
  if (digits == 0 || (isSmall(coarse.magnitude) && digits <= kQuickDigits)) {
    const Uint128 x = coarse.magnitude * powerOfTen(digits);
    const Uint128 y = fine.magnitude;
    DecimalParts result{x + y, fine.scale, fine.negative};
    if (coarse.negative != fine.negative)
      result =
          x > y ? DecimalParts{x - y, fine.scale, coarse.negative} : DecimalParts{y - x, fine.scale, fine.negative};
    if (result.magnitude <= kMaxMagnitude) return result.build();
    return DecimalParts::fit(Uint192(result.magnitude), result.scale, result.negative);
  }
  Uint192 x = Uint192::product(coarse.magnitude, powerOfTen(digits));
  Uint192 y(fine.magnitude);
  if (coarse.negative == fine.negative) return DecimalParts::fit(x += y, fine.scale, fine.negative);
  if (compare(x, y) > 0) return DecimalParts::fit(x -= y, fine.scale, coarse.negative);
  return DecimalParts::fit(y -= x, fine.scale, fine.negative);
}

int compareMagnitudes(const DecimalParts& a, const DecimalParts& b) {
  const int digits = b.scale - a.scale;
  if (digits < 0) return -compareMagnitudes(b, a);
  if (digits == 0 || (isSmall(a.magnitude) && digits <= kQuickDigits)) {
    const Uint128 x = a.magnitude * powerOfTen(digits);
    return x == b.magnitude ? 0 : x < b.magnitude ? -1 : 1;
  }
  return compare(Uint192::product(a.magnitude, powerOfTen(digits)), Uint192(b.magnitude));
}

}  // namespace

Decimal Decimal::FromScaled(std::int64_t units, int scale) {
  if (scale < 0 || scale > kMaxScale) throw Errore("Invalid procedure call or argument");
  Decimal d;
  d.lo_ = units < 0 ? 0 - static_cast<std::uint64_t>(units) : static_cast<std::uint64_t>(units);
  d.scale_ = static_cast<std::uint8_t>(scale);
  d.negative_ = units < 0;
  return d;
}

std::optional<std::int64_t> Decimal::toScaled(int scale) const {
  Uint128 units = DecimalParts::of(*this).magnitude;
  if (units == 0) return 0;
  if (const int digits = scale - scale_; digits > 0) {
    if (!isSmall(units) || digits > kQuickDigits) return std::nullopt;
    units *= powerOfTen(digits);
  } else if (digits < 0) {
    if (-digits > kMaxScale) return std::nullopt;
    const Uint128 divisor = powerOfTen(-digits);
    if (isSmall(units) && isSmall(divisor)) {
      const std::uint64_t narrow = static_cast<std::uint64_t>(divisor);
      if (lo_ % narrow != 0) return std::nullopt;
      units = lo_ / narrow;
    } else {
      if (units % divisor != 0) return std::nullopt;
      units /= divisor;
    }
  }
  constexpr Uint128 kLimit = Uint128{1} << 63;
  if (negative_ ? units > kLimit : units >= kLimit) return std::nullopt;
  const auto bits = static_cast<std::uint64_t>(units);
  return static_cast<std::int64_t>(negative_ ? 0 - bits : bits);
}

Decimal Decimal::rounded(int digits) const {
  if (digits < 0) throw Errore("Invalid procedure call or argument");
  if (digits >= scale_) return *this;
  const DecimalParts parts = DecimalParts::of(*this);
  const Uint128 divisor = powerOfTen(scale_ - digits);
  Uint128 quotient = 0;
  if (isSmall(parts.magnitude) && isSmall(divisor)) {
    const auto narrow = static_cast<std::uint64_t>(divisor);
    quotient = lo_ / narrow + (lo_ % narrow >= narrow / 2 ? 1U : 0U);
  } else {
    quotient = parts.magnitude / divisor + (parts.magnitude % divisor >= divisor / 2 ? 1U : 0U);
  }
  return DecimalParts{quotient, digits, negative_}.build();
}

int Decimal::integerDigits() const {
  const Uint128 magnitude = DecimalParts::of(*this).magnitude;
  int digits = 0;
  while (magnitude >= powerOfTen(digits)) ++digits;
  return digits > scale_ ? digits - scale_ : 0;
}

Decimal Decimal::normalized() const {
  DecimalParts parts = DecimalParts::of(*this);
  if (parts.magnitude == 0) return {};
  while (parts.scale > 0 && isSmall(parts.magnitude) && static_cast<std::uint64_t>(parts.magnitude) % 10 == 0) {
    parts.magnitude = static_cast<std::uint64_t>(parts.magnitude) / 10;
    --parts.scale;
  }
  while (parts.scale > 0 && parts.magnitude % 10 == 0) {
    parts.magnitude /= 10;
    --parts.scale;
  }
  return parts.build();
}

Decimal Decimal::operator-() const {
  Decimal d = *this;
  d.negative_ = !negative_ && !isZero();
  return d;
}

Decimal operator+(const Decimal& a, const Decimal& b) { return sum(DecimalParts::of(a), DecimalParts::of(b)); }

Decimal operator-(const Decimal& a, const Decimal& b) { return a + -b; }

Decimal operator*(const Decimal& a, const Decimal& b) {
  const DecimalParts x = DecimalParts::of(a), y = DecimalParts::of(b);
  const int scale = x.scale + y.scale;
  const bool negative = x.negative != y.negative;
  if (isSmall(x.magnitude) && isSmall(y.magnitude)) {
    const Uint128 product = x.magnitude * y.magnitude;
    if (product <= kMaxMagnitude && scale <= Decimal::kMaxScale) return DecimalParts{product, scale, negative}.build();
  }
  return DecimalParts::fit(Uint192::product(x.magnitude, y.magnitude), scale, negative);
}

Decimal operator/(const Decimal& a, const Decimal& b) {
  const DecimalParts x = DecimalParts::of(a), y = DecimalParts::of(b);
  if (y.magnitude == 0) throw Errore("Division by zero");
  Uint128 quotient = x.magnitude / y.magnitude;
  Uint128 rest = x.magnitude % y.magnitude;
  int scale = x.scale - y.scale;
  const int natural = scale > 0 ? scale : 0;
  // Long division, nine digits at a time while they fit: a rest below 2^96 times 10^9 stays within 128 bits.
  const auto extend = [&](int digits) {
    const Uint128 step = rest * powerOfTen(digits);
    const Uint128 longer = quotient * powerOfTen(digits) + step / y.magnitude;
    if (scale + digits > Decimal::kMaxScale || longer > kMaxMagnitude) return false;
    quotient = longer;
    rest = step % y.magnitude;
    scale += digits;
    return true;
  };
  while (rest != 0 || scale < 0)
    if (!extend(9) && !extend(1)) break;
  if (scale < 0) throw Errore("Overflow");
  while (rest == 0 && scale > natural && quotient % 10 == 0) {
    quotient /= 10;
    --scale;
  }
  const unsigned next = rest * 2 >= y.magnitude ? 5U : 0U;
  return DecimalParts::fit(Uint192(quotient), scale, x.negative != y.negative, next);
}

std::strong_ordering operator<=>(const Decimal& a, const Decimal& b) {
  if (a.isNegative() != b.isNegative())
    return a.isNegative() ? std::strong_ordering::less : std::strong_ordering::greater;
  const int order = compareMagnitudes(DecimalParts::of(a), DecimalParts::of(b));
  return (a.isNegative() ? -order : order) <=> 0;
}

}  // namespace values
