#pragma once

#include <array>
#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>

/// Integers of 128 bits: the compiler's where it has them, else the same in two words.
namespace values {

/// Two's complement; what overflows wraps around. Division by zero is not to be asked for.
template <bool isSigned>
class TwoWords {
 public:
  constexpr TwoWords() = default;
  template <std::integral T>
  constexpr TwoWords(T value) : low_(static_cast<std::uint64_t>(value)), high_(value < T{0} ? ~std::uint64_t{0} : 0) {}

  template <std::integral T>
  requires(!std::same_as<T, bool>) constexpr explicit operator T() const { return static_cast<T>(low_); }
  constexpr explicit operator double() const {
    if (isNegative()) return -static_cast<double>(magnitude());
    return static_cast<double>(high_) * 18446744073709551616.0 + static_cast<double>(low_);
  }

  constexpr TwoWords operator-() const { return TwoWords() - *this; }
  constexpr TwoWords& operator++() { return *this += TwoWords(1); }

  friend constexpr TwoWords operator+(TwoWords a, TwoWords b) {
    const auto low = a.low_ + b.low_;
    return {low, a.high_ + b.high_ + (low < a.low_ ? 1 : 0)};
  }
  friend constexpr TwoWords operator-(TwoWords a, TwoWords b) {
    return {a.low_ - b.low_, a.high_ - b.high_ - (a.low_ < b.low_ ? 1 : 0)};
  }
  friend constexpr TwoWords operator*(TwoWords a, TwoWords b) {
    const auto limbsA = a.limbs(), limbsB = b.limbs();
    std::array<std::uint32_t, 4> product{};
    for (std::size_t i = 0; i < 4; ++i) {
      std::uint64_t carry = 0;
      for (std::size_t j = 0; i + j < 4; ++j) {
        carry += std::uint64_t{limbsA[i]} * limbsB[j] + product[i + j];
        product[i + j] = static_cast<std::uint32_t>(carry);
        carry >>= 32;
      }
    }
    return fromLimbs(product);
  }
  friend constexpr TwoWords operator/(TwoWords a, TwoWords b) {
    TwoWords rest;
    const auto quotient = divide(a.magnitude(), b.magnitude(), rest);
    return a.isNegative() != b.isNegative() ? -quotient : quotient;
  }
  friend constexpr TwoWords operator%(TwoWords a, TwoWords b) {
    TwoWords rest;
    divide(a.magnitude(), b.magnitude(), rest);
    return a.isNegative() ? -rest : rest;
  }
  friend constexpr TwoWords operator|(TwoWords a, TwoWords b) { return {a.low_ | b.low_, a.high_ | b.high_}; }
  friend constexpr TwoWords operator<<(TwoWords a, int bits) {
    if (bits == 0) return a;
    if (bits >= 64) return {0, a.low_ << (bits - 64)};
    return {a.low_ << bits, a.high_ << bits | a.low_ >> (64 - bits)};
  }
  /// Of a value that is not negative.
  friend constexpr TwoWords operator>>(TwoWords a, int bits) {
    if (bits == 0) return a;
    if (bits >= 64) return {a.high_ >> (bits - 64), 0};
    return {a.low_ >> bits | a.high_ << (64 - bits), a.high_ >> bits};
  }
  constexpr TwoWords& operator+=(TwoWords b) { return *this = *this + b; }
  constexpr TwoWords& operator-=(TwoWords b) { return *this = *this - b; }
  constexpr TwoWords& operator*=(TwoWords b) { return *this = *this * b; }
  constexpr TwoWords& operator/=(TwoWords b) { return *this = *this / b; }

  friend constexpr bool operator==(TwoWords a, TwoWords b) { return a.low_ == b.low_ && a.high_ == b.high_; }
  friend constexpr std::strong_ordering operator<=>(TwoWords a, TwoWords b) {
    if (a.isNegative() != b.isNegative()) return b.isNegative() <=> a.isNegative();
    return a.high_ != b.high_ ? a.high_ <=> b.high_ : a.low_ <=> b.low_;
  }

  constexpr bool isNegative() const { return isSigned && high_ >> 63 != 0; }

 private:
  using Limbs = std::array<std::uint32_t, 4>;  // least significant first

  constexpr TwoWords(std::uint64_t low, std::uint64_t high) : low_(low), high_(high) {}
  constexpr Limbs limbs() const {
    return {static_cast<std::uint32_t>(low_), static_cast<std::uint32_t>(low_ >> 32), static_cast<std::uint32_t>(high_),
            static_cast<std::uint32_t>(high_ >> 32)};
  }
  static constexpr TwoWords fromLimbs(const Limbs& limbs) {
    return {std::uint64_t{limbs[1]} << 32 | limbs[0], std::uint64_t{limbs[3]} << 32 | limbs[2]};
  }
  /// The smallest value is its own magnitude, read without a sign.
  constexpr TwoWords magnitude() const { return isNegative() ? -*this : *this; }
  constexpr bool isBelow(TwoWords other) const {
    return high_ != other.high_ ? high_ < other.high_ : low_ < other.low_;
  }

  /// Both are read without a sign.
  static constexpr TwoWords divide(TwoWords a, TwoWords b, TwoWords& rest) {
    if (a.high_ == 0 && b.high_ == 0) {
      rest = {a.low_ % b.low_, 0};
      return {a.low_ / b.low_, 0};
    }
    return b.high_ == 0 && b.low_ <= std::numeric_limits<std::uint32_t>::max() ? divideShort(a, b.low_, rest)
                                                                               : divideLong(a, b, rest);
  }
  static constexpr TwoWords divideShort(TwoWords a, std::uint64_t divisor, TwoWords& rest) {
    auto limbs = a.limbs();
    std::uint64_t left = 0;
    for (std::size_t i = 4; i-- > 0;) {
      left = left << 32 | limbs[i];
      limbs[i] = static_cast<std::uint32_t>(left / divisor);
      left %= divisor;
    }
    rest = {left, 0};
    return fromLimbs(limbs);
  }
  static constexpr TwoWords divideLong(TwoWords a, TwoWords b, TwoWords& rest) {
    TwoWords quotient;
    rest = {};
    for (int bit = 127; bit >= 0; --bit) {
      const bool overflows = rest.high_ >> 63 != 0;
      rest = rest << 1;
      rest.low_ |= (bit >= 64 ? a.high_ >> (bit - 64) : a.low_ >> bit) & 1;
      quotient = quotient << 1;
      if (!overflows && rest.isBelow(b)) continue;
      rest -= b;
      quotient.low_ |= 1;
    }
    return quotient;
  }

  std::uint64_t low_ = 0;
  std::uint64_t high_ = 0;
};

/// a + b and a × b; false when the result does not fit.
constexpr bool addInto(TwoWords<true> a, TwoWords<true> b, TwoWords<true>& sum) {
  sum = a + b;
  return a.isNegative() != b.isNegative() || sum.isNegative() == a.isNegative();
}
constexpr bool multiplyInto(TwoWords<true> a, TwoWords<true> b, TwoWords<true>& product) {
  product = a * b;
  if (a == 0 || b == 0) return true;
  return product != 0 && product.isNegative() == (a.isNegative() != b.isNegative()) && product / b == a;
}

#ifdef __SIZEOF_INT128__

__extension__ typedef __int128 Int128;
__extension__ typedef unsigned __int128 Uint128;

constexpr bool addInto(Int128 a, Int128 b, Int128& sum) { return !__builtin_add_overflow(a, b, &sum); }
constexpr bool multiplyInto(Int128 a, Int128 b, Int128& product) { return !__builtin_mul_overflow(a, b, &product); }

#else

using Int128 = TwoWords<true>;
using Uint128 = TwoWords<false>;

#endif

}  // namespace values
