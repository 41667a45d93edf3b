#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>

#include "values/Int128.h"

/// Unsigned integers wider than the language's: what exact decimals are computed with. Internal to this
/// folder.
namespace values {

inline constexpr Uint128 kMaxMagnitude = (Uint128{1} << 96) - 1;

inline constexpr std::array<Uint128, 39> kPowersOfTen = [] {
  std::array<Uint128, 39> powers{};
  Uint128 power = 1;
  for (Uint128& p : powers) {
    p = power;
    power *= 10;
  }
  return powers;
}();

constexpr Uint128 powerOfTen(int exponent) {
  assert(exponent >= 0 && static_cast<std::size_t>(exponent) < kPowersOfTen.size());
  return kPowersOfTen[static_cast<std::size_t>(exponent)];
}

/// 192 bits: the product of two 96-bit integers.
class Uint192 {
 public:
  constexpr explicit Uint192(Uint128 value = 0) {
    for (int i = 0; i < 4; ++i) limbs_[index(i)] = static_cast<std::uint32_t>(value >> (32 * i));
  }

  /// Both factors below 2^96.
  static constexpr Uint192 product(Uint128 a, Uint128 b) {
    assert(a <= kMaxMagnitude && b <= kMaxMagnitude);
    const Uint192 x(a), y(b);
    Uint192 result;
    for (int i = 0; i < 3; ++i) {
      std::uint64_t carry = 0;
      for (int j = 0; j < 3; ++j) {
        carry += std::uint64_t{x.limbs_[index(i)]} * y.limbs_[index(j)] + result.limbs_[index(i + j)];
        result.limbs_[index(i + j)] = static_cast<std::uint32_t>(carry);
        carry >>= 32;
      }
      result.limbs_[index(i + 3)] = static_cast<std::uint32_t>(carry);
    }
    return result;
  }

  constexpr bool fits96() const { return limbs_[3] == 0 && limbs_[4] == 0 && limbs_[5] == 0; }
  /// A value below 2^128.
  constexpr Uint128 low128() const {
    assert(limbs_[4] == 0 && limbs_[5] == 0);
    Uint128 value = 0;
    for (int i = 3; i >= 0; --i) value = value << 32 | limbs_[index(i)];
    return value;
  }

  /// A sum below 2^192.
  constexpr Uint192& operator+=(const Uint192& other) {
    std::uint64_t carry = 0;
    for (int i = 0; i < 6; ++i) {
      carry += std::uint64_t{limbs_[index(i)]} + other.limbs_[index(i)];
      limbs_[index(i)] = static_cast<std::uint32_t>(carry);
      carry >>= 32;
    }
    assert(carry == 0);
    return *this;
  }
  /// `other` not greater than this.
  constexpr Uint192& operator-=(const Uint192& other) {
    std::uint64_t borrow = 0;
    for (int i = 0; i < 6; ++i) {
      const std::uint64_t difference = std::uint64_t{limbs_[index(i)]} - other.limbs_[index(i)] - borrow;
      limbs_[index(i)] = static_cast<std::uint32_t>(difference);
      borrow = difference >> 63;
    }
    assert(borrow == 0);
    return *this;
  }
  /// Divides by ten and returns the remainder.
  constexpr unsigned dropDigit() {
    std::uint64_t rest = 0;
    for (int i = 5; i >= 0; --i) {
      rest = rest << 32 | limbs_[index(i)];
      limbs_[index(i)] = static_cast<std::uint32_t>(rest / 10);
      rest %= 10;
    }
    return static_cast<unsigned>(rest);
  }

  friend constexpr int compare(const Uint192& a, const Uint192& b) {
    for (int i = 5; i >= 0; --i)
      if (a.limbs_[index(i)] != b.limbs_[index(i)]) return a.limbs_[index(i)] < b.limbs_[index(i)] ? -1 : 1;
    return 0;
  }

 private:
  static constexpr std::size_t index(int i) { return static_cast<std::size_t>(i); }

  std::array<std::uint32_t, 6> limbs_{};  // least significant first
};

}  // namespace values
