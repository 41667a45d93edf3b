#include <charconv>
#include <cmath>
#include <string>

#include "values/Decimal.h"
#include "values/DecimalParts.h"

namespace values {

namespace {

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

}  // namespace values
