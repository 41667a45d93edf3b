#include "values/Decimal.h"

#include <cassert>
#include <charconv>
#include <cmath>

#include "values/DecimalParts.h"
#include "values/Errore.h"

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

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Exponents beyond this say "too large" or "zero" whatever the digits are.
constexpr long kFarExponent = 1'000'000;

/// The digits of a number, cut where they no longer fit; `dropped` is the first digit cut off.
struct Digits {
  Uint128 magnitude = 0;
  long scale = 0;
  unsigned dropped = 0;
  bool any = false;
  bool full = false;

  void take(char c, bool inFraction) {
    const auto digit = static_cast<unsigned>(c - '0');
    any = true;
    if (!full && magnitude * 10 + digit <= kMaxMagnitude) {
      magnitude = magnitude * 10 + digit;
      if (inFraction) ++scale;
      return;
    }
    if (!full) dropped = digit;
    full = true;
    if (!inFraction) --scale;
  }
};

/// Reads "E+3"; nothing when there is something else.
std::optional<long> readExponent(std::string_view text) {
  text.remove_prefix(1);
  const bool negative = !text.empty() && text.front() == '-';
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
  if (text.empty()) return std::nullopt;
  long exponent = 0;
  for (const char c : text) {
    if (!isDigit(c)) return std::nullopt;
    if (exponent < kFarExponent) exponent = exponent * 10 + (c - '0');
  }
  return negative ? -exponent : exponent;
}

Decimal build(const Digits& digits, bool negative) {
  if (digits.magnitude == 0) {
    const bool keep = digits.scale >= 0 && digits.scale <= Decimal::kMaxScale;
    return DecimalParts{0, keep ? static_cast<int>(digits.scale) : 0, false}.build();
  }
  if (digits.scale < 0) {
    if (digits.full || digits.scale < -Decimal::kMaxScale) throw Errore("Overflow");
    return DecimalParts::fit(Uint192::product(digits.magnitude, powerOfTen(static_cast<int>(-digits.scale))), 0,
                             negative);
  }
  constexpr long kVanishes = Decimal::kMaxScale + 30;
  if (digits.scale > kVanishes) return {};
  return DecimalParts::fit(Uint192(digits.magnitude), static_cast<int>(digits.scale), negative, digits.dropped);
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

Decimal Decimal::FromDouble(double value) {
  if (!std::isfinite(value) || std::fabs(value) >= 79228162514264337593543950336.0) throw Errore("Overflow");
  // A decimal of at most 15 digits comes back unchanged from the nearest double: if one with four decimals
  // gives this double, it is the answer, and no text is needed.
  if (std::fabs(value) < 1e11) {
    const double units = std::nearbyint(value * 1e4);
    if (units / 1e4 == value) return FromScaled(static_cast<std::int64_t>(units), 4).normalized();
  }
  char text[64];
  constexpr int kExactEnough = 32;  // so many digits that the rounding at the fifteenth sees a true half
  const char* end = std::to_chars(text, text + sizeof text, value, std::chars_format::scientific, kExactEnough).ptr;
  const bool negative = text[0] == '-';
  const std::string_view all(text, static_cast<std::size_t>(end - text));
  Digits digits;
  constexpr std::size_t kSignificant = 15 + 1;  // and the point
  const std::string_view number = all.substr(negative ? 1 : 0);
  for (const char c : number.substr(0, kSignificant))
    if (c != '.') digits.take(c, true);
  if (number[kSignificant] >= '5') ++digits.magnitude;
  digits.scale = 14 - *readExponent(number.substr(number.find('e')));
  return build(digits, negative).normalized();
}

std::optional<Decimal> Decimal::TryParse(std::string_view text) {
  const bool negative = !text.empty() && text.front() == '-';
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
  Digits digits;
  bool inFraction = false;
  std::size_t at = 0;
  for (; at < text.size(); ++at) {
    if (isDigit(text[at])) {
      digits.take(text[at], inFraction);
    } else if (text[at] == '.' && !inFraction) {
      inFraction = true;
    } else {
      break;
    }
  }
  if (!digits.any) return std::nullopt;
  if (at < text.size()) {
    if (text[at] != 'E' && text[at] != 'e') return std::nullopt;
    const std::optional<long> exponent = readExponent(text.substr(at));
    if (!exponent) return std::nullopt;
    digits.scale -= *exponent;
  }
  return build(digits, negative);
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

std::string Decimal::toString() const {
  char buffer[40];
  char* const end = buffer + sizeof buffer;
  char* at = end;
  int written = 0;
  const auto put = [&](unsigned digit) {
    if (written == scale_ && scale_ > 0) *--at = '.';
    *--at = static_cast<char>('0' + digit);
    ++written;
  };
  constexpr std::uint64_t kHalf = 10'000'000'000'000'000'000U;
  std::uint64_t low = lo_;
  std::uint64_t high = 0;
  if (hi_ != 0) {
    const Uint128 magnitude = DecimalParts::of(*this).magnitude;
    high = static_cast<std::uint64_t>(magnitude / kHalf);
    low = static_cast<std::uint64_t>(magnitude % kHalf);
  }
  for (; low != 0; low /= 10) put(static_cast<unsigned>(low % 10));
  while (high != 0 && written < 19) put(0);
  for (; high != 0; high /= 10) put(static_cast<unsigned>(high % 10));
  while (written <= scale_) put(0);
  if (isNegative()) *--at = '-';
  return std::string(at, end);
}

double Decimal::toDouble() const {
  constexpr std::uint64_t kExact = std::uint64_t{1} << 53;
  if (hi_ == 0 && lo_ <= kExact && scale_ <= 22) {
    // Both are exact doubles, so the quotient is the nearest one.
    const double value = static_cast<double>(lo_) / static_cast<double>(powerOfTen(scale_));
    return negative_ ? -value : value;
  }
  const std::string text = toString();
  double value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
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
