#include "engine/Scaled.h"

#include <algorithm>
#include <array>

#include "values/Text.h"

namespace engine {
namespace {

constexpr auto kPowers = [] {
  std::array<Int128, kMaxDigits + 1> powers{};
  Int128 power = 1;
  for (auto& entry : powers) {
    entry = power;
    if (&entry != &powers.back()) power *= 10;
  }
  return powers;
}();

bool within38Digits(Int128 value) { return value < kPowers[kMaxDigits] && value > -kPowers[kMaxDigits]; }

}  // namespace

Int128 powerOfTen(int exponent) { return kPowers[static_cast<std::size_t>(exponent)]; }

int digitCount(Int128 value) {
  if (value < 0) value = -value;
  int digits = 1;
  while (digits <= kMaxDigits && value >= kPowers[static_cast<std::size_t>(digits)]) ++digits;
  return digits;
}

std::optional<Scaled> parseScaled(std::string_view text) {
  text = values::trim(text);
  const bool negative = !text.empty() && text.front() == '-';
  if (negative || (!text.empty() && text.front() == '+')) text.remove_prefix(1);
  Scaled result;
  bool point = false;
  int digits = 0;
  int significant = 0;
  for (const char c : text) {
    if (c == '.' && !point) {
      point = true;
      continue;
    }
    if (c < '0' || c > '9') return std::nullopt;
    ++digits;
    if ((significant > 0 || c != '0') && ++significant > kMaxDigits) return std::nullopt;
    result.units = result.units * 10 + (c - '0');
    if (point) ++result.scale;
  }
  if (digits == 0 || result.scale > kMaxDigits) return std::nullopt;
  if (negative) result.units = -result.units;
  return result;
}

std::optional<Int128> parseUnits(std::string_view text) {
  const auto parsed = parseScaled(text);
  if (!parsed || parsed->scale != 0) return std::nullopt;
  return parsed->units;
}

std::string unitsToText(Int128 units) {
  const bool negative = units < 0;
  std::string text;
  do {
    const auto digit = static_cast<int>(units % 10);
    text.push_back(static_cast<char>('0' + (digit < 0 ? -digit : digit)));
    units /= 10;
  } while (units != 0);
  if (negative) text.push_back('-');
  std::reverse(text.begin(), text.end());
  return text;
}

std::string unitsToPlainText(Int128 units, int scale) {
  std::string text = unitsToText(units);
  if (scale == 0) return text;
  const std::size_t sign = units < 0 ? 1 : 0;
  const auto wanted = static_cast<std::size_t>(scale) + 1;
  if (text.size() - sign < wanted) text.insert(sign, wanted - (text.size() - sign), '0');
  text.insert(text.size() - static_cast<std::size_t>(scale), 1, '.');
  return text;
}

std::optional<Int128> rescale(Int128 units, int from, int to) {
  if (to == from) return units;
  if (to > from) {
    const auto result = multiplyChecked(units, powerOfTen(std::min(to - from, kMaxDigits)));
    return result && within38Digits(*result) ? result : std::nullopt;
  }
  if (from - to > kMaxDigits) return 0;
  return divideRounded(units, powerOfTen(from - to));
}

Int128 divideRounded(Int128 numerator, Int128 denominator) {
  Int128 quotient = numerator / denominator;
  const Int128 rest = numerator % denominator;
  const Int128 half = rest < 0 ? -rest : rest;
  const Int128 size = denominator < 0 ? -denominator : denominator;
  if (half >= size - half) quotient += (numerator < 0) == (denominator < 0) ? 1 : -1;
  return quotient;
}

std::optional<Int128> addChecked(Int128 a, Int128 b) {
  Int128 result;
  if (!values::addInto(a, b, result)) return std::nullopt;
  return result;
}

std::optional<Int128> multiplyChecked(Int128 a, Int128 b) {
  Int128 result;
  if (!values::multiplyInto(a, b, result)) return std::nullopt;
  return result;
}

}  // namespace engine
