#include "support/Test.h"
#include "values/Int128.h"

#ifdef __SIZEOF_INT128__

namespace {

using values::Int128, values::TwoWords, values::Uint128;

/// Numbers of every length, with many bits alike.
template <class T>
T drawn(std::mt19937_64& random) {
  T value = static_cast<T>(random()) << 64 | static_cast<T>(random());
  if (random() % 4 == 0) value |= ~std::uint64_t{0};
  const int drop = static_cast<int>(random() % 127);
  value = static_cast<T>(static_cast<Uint128>(value) >> drop);
  return static_cast<T>(random() % 2 == 0 ? value : T{0} - value);
}

template <class T, class Twin>
Twin twinOf(T value) {
  const auto bits = static_cast<Uint128>(value);
  return Twin(static_cast<std::uint64_t>(bits >> 64)) << 64 | Twin(static_cast<std::uint64_t>(bits));
}

template <class T, class Twin>
void expectTwins() {
  std::mt19937_64 random(7);
  for (int i = 0; i < 20'000; ++i) {
    const auto a = drawn<T>(random), b = drawn<T>(random);
    const auto x = twinOf<T, Twin>(a), y = twinOf<T, Twin>(b);
    const auto same = [](T value, Twin twin) { return twinOf<T, Twin>(value) == twin; };
    const auto wrapped = [](Uint128 value) { return static_cast<T>(value); };
    const int bits = static_cast<int>(random() % 128);
    const auto u = static_cast<Uint128>(a), v = static_cast<Uint128>(b);
    ASSERT_TRUE(same(wrapped(u + v), x + y) && same(wrapped(u - v), x - y) && same(wrapped(u * v), x * y));
    ASSERT_TRUE(same(wrapped(u << bits), x << bits));
    ASSERT_EQ(a < b, x < y);
    ASSERT_DOUBLE_EQ(static_cast<double>(a), static_cast<double>(x));
    ASSERT_TRUE(b == 0 || (same(a / b, x / y) && same(a % b, x % y)));
    ASSERT_TRUE(a < 0 || same(a >> bits, x >> bits));
  }
}

TEST(Int128, TwoWordsAreTheCompilersInteger) {
  expectTwins<Uint128, TwoWords<false>>();
  expectTwins<Int128, TwoWords<true>>();
  std::mt19937_64 random(11);
  for (int i = 0; i < 20'000; ++i) {
    const auto a = drawn<Int128>(random), b = drawn<Int128>(random);
    Int128 result = 0;
    TwoWords<true> twin;
    const auto x = twinOf<Int128, TwoWords<true>>(a), y = twinOf<Int128, TwoWords<true>>(b);
    ASSERT_EQ(values::addInto(a, b, result), values::addInto(x, y, twin));
    ASSERT_EQ(values::multiplyInto(a, b, result), values::multiplyInto(x, y, twin));
  }
}

}  // namespace

#endif
