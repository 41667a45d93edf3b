#include "support/Test.h"

namespace {

using namespace values;

/// Schoolbook arithmetic on strings of digits: slow, and shares nothing with the code under test.
std::string multiplyDigits(const std::string& a, const std::string& b) {
  std::vector<int> cells(a.size() + b.size(), 0);
  for (std::size_t i = 0; i < a.size(); ++i)
    for (std::size_t j = 0; j < b.size(); ++j) cells[i + j + 1] += (a[i] - '0') * (b[j] - '0');
  for (std::size_t i = cells.size() - 1; i > 0; --i) {
    cells[i - 1] += cells[i] / 10;
    cells[i] %= 10;
  }
  std::string out;
  for (const int cell : cells) out += static_cast<char>('0' + cell);
  const std::size_t start = out.find_first_not_of('0');
  return start == std::string::npos ? "0" : out.substr(start);
}

std::string increment(std::string digits) {
  std::size_t at = digits.size();
  while (at > 0 && digits[at - 1] == '9') digits[--at] = '0';
  if (at == 0) return "1" + digits;
  ++digits[at - 1];
  return digits;
}

/// Cuts digits of a fraction until 96 bits and 28 decimals hold them; the first digit cut rounds. Nothing on overflow.
std::string fitDigits(std::string digits, int scale) {
  const std::string most = "79228162514264337593543950335";
  const auto fits = [&](const std::string& d) {
    return d.size() < most.size() || (d.size() == most.size() && d <= most);
  };
  while (static_cast<int>(digits.size()) <= scale) digits.insert(0, "0");
  const auto bare = [](const std::string& d) { return d.substr(std::min(d.find_first_not_of('0'), d.size() - 1)); };
  for (std::size_t cut = 0;; ++cut) {
    const int left = scale - static_cast<int>(cut);
    if (left < 0) return {};
    std::string kept = digits.substr(0, digits.size() - cut);
    if (cut > 0 && digits[kept.size()] >= '5') kept = increment(kept);
    if (left > 28 || !fits(bare(kept))) continue;
    if (left > 0) kept.insert(kept.size() - static_cast<std::size_t>(left), ".");
    const std::size_t start = kept.find_first_not_of('0');
    return start == std::string::npos || kept[start] == '.' ? kept.substr(kept.find('.') - 1) : kept.substr(start);
  }
}

TEST(Decimal, SumsAtTheLimitsOfColumnsAreExact) {
  std::mt19937_64 random(20110131);
  for (const auto& [scale, limit] : {std::pair{2, 999'999'999'999'999}, std::pair{3, 99'999'999'999'999}}) {
    std::uniform_int_distribution<std::int64_t> units(-limit, limit);
    Decimal sum;
    std::int64_t expected = 0;
    for (int i = 0; i < 10'000; ++i) {
      const std::int64_t value = i % 100 == 0 ? (expected > 0 ? -limit : limit) : units(random);
      if (i % 2 == 0) {
        sum = sum + Decimal::FromScaled(value, scale);
        expected += value;
      } else {
        sum = sum - Decimal::FromScaled(value, scale);
        expected -= value;
      }
      ASSERT_EQ(sum.toScaled(scale), expected);
    }
  }
}

TEST(Decimal, ProductsMatchSchoolbookMultiplication) {
  std::mt19937_64 random(7);
  const auto digits = [&](std::size_t count) {
    std::string out(1, static_cast<char>('1' + random() % 9));
    while (out.size() < count) out += static_cast<char>('0' + random() % 10);
    return out;
  };
  for (int i = 0; i < 3000; ++i) {
    const std::string a = digits(1 + random() % 28);
    const std::string b = digits(1 + random() % 28);
    const int sa = static_cast<int>(random() % (a.size() + 1));
    const int sb = static_cast<int>(random() % (b.size() + 1));
    const std::string product = multiplyDigits(a, b);
    const std::string expected = fitDigits(product, sa + sb);
    if (expected.empty()) {
      EXPECT_THROW(dec(a + "E-" + std::to_string(sa)) * dec(b + "E-" + std::to_string(sb)), Errore) << a << " * " << b;
      continue;
    }
    const Decimal got = dec(a + "E-" + std::to_string(sa)) * -dec(b + "E-" + std::to_string(sb));
    ASSERT_EQ(got.toString(), "-" + expected) << a << " e-" << sa << " * " << b << " e-" << sb;
  }
}

TEST(Decimal, QuotientsTimesDivisorSurroundTheDividend) {
  std::mt19937_64 random(11);
  for (int i = 0; i < 2000; ++i) {
    const Decimal a =
        Decimal::FromScaled(static_cast<std::int64_t>(random() >> (1 + random() % 60)), static_cast<int>(random() % 4));
    const Decimal b = Decimal::FromScaled(1 + static_cast<std::int64_t>(random() >> (1 + random() % 60)),
                                          static_cast<int>(random() % 4));
    // An exact product gives its factors back, and no trailing zeros beyond the scales' difference.
    const Decimal product = dec(std::to_string(i)) * b;
    ASSERT_EQ(product / b, Decimal::FromScaled(i));
    const Decimal q = a / b;
    const Decimal half = q.scale() == 28 ? dec("0.5E-27") : dec("1E-" + std::to_string(q.scale()));
    const Decimal back = q * b - a;
    ASSERT_LE(back.isNegative() ? -back : back, half * b + dec("1E-9")) << a.toString() << " / " << b.toString();
  }
  for (const auto& [operands, quotient] :
       inOut({"1/4 => 0.25", "100.00/4 => 25.00", "2/3 => 0.6666666666666666666666666667",
              "-1/3 => -0.3333333333333333333333333333",
              "1/0.0000000000000000000000000001 => 10000000000000000000000000000",
              "79228162514264337593543950335/10 => 7922816251426433759354395033.5",
              "1/79228162514264337593543950335 => 0.0000000000000000000000000000", "5.0/0.5 => 10", "0.00/7 => 0.00",
              "10/1.25 => 8", "1/0.00000000000000003 => 33333333333333333.333333333333"})) {
    const auto slash = operands.find('/');
    EXPECT_EQ((dec(operands.substr(0, slash)) / dec(operands.substr(slash + 1))).toString(), quotient) << operands;
  }
  EXPECT_THROW(dec("1") / dec("0.00"), Errore);
  EXPECT_THROW(dec("79228162514264337593543950335") / dec("0.1"), Errore);
}

TEST(Decimal, WideOperandsAlignTheirScales) {
  const struct {
    const char *a, *b, *sum, *difference;
  } kRows[] = {
      {"79228162514264337593543950335", "0.4", "79228162514264337593543950335", "79228162514264337593543950335"},
      {"79228162514264337593543950334", "0.5", "79228162514264337593543950335", "79228162514264337593543950334"},
      {"7922816251426433759354395033.5", "0.05", "7922816251426433759354395034", "7922816251426433759354395033.5"},
      {"0.0000000000000000000000000001", "10000000000000000000", "10000000000000000000.000000000",
       "-10000000000000000000.000000000"},
      {"1.0", "1.00", "2.00", "0.00"},
      {"-5", "3.25", "-1.75", "-8.25"}};
  for (const auto& row : kRows) {
    EXPECT_EQ((dec(row.a) + dec(row.b)), dec(row.sum)) << row.a;
    EXPECT_EQ((dec(row.a) - dec(row.b)), dec(row.difference)) << row.a;
  }
  EXPECT_THROW(dec("79228162514264337593543950335") + dec("0.5"), Errore);
  EXPECT_THROW(dec("79228162514264337593543950335") - dec("-1"), Errore);
  EXPECT_LT(dec("7922816251426433759354395033"), dec("79228162514264337593543950335"));
  EXPECT_LT(dec("-79228162514264337593543950335"), dec("0.0000000000000000000000000001"));
  EXPECT_GT(dec("7.9228162514264337593543950335"), dec("7.9228162514264337593543950334"));
  EXPECT_EQ(dec("1"), dec("1.0000000000000000000000000000"));
  EXPECT_EQ(dec("-0.00"), dec("0"));
}

TEST(Decimal, RoundsHalvesAwayFromZero) {
  for (const auto& [value, rounded] :
       inOut({"0.005 2 => 0.01", "-0.005 2 => -0.01", "0.0049999 2 => 0.00", "-0.0049 2 => 0.00", "2.5 0 => 3",
              "-2.5 0 => -3", "1.45 5 => 1.45", "999999999999.995 2 => 1000000000000.00",
              "7.9228162514264337593543950335 27 => 7.922816251426433759354395034",
              "0.5000000000000000000000000000 0 => 1", "0.4999999999999999999999999999 0 => 0"})) {
    const auto blank = value.find(' ');
    EXPECT_EQ(dec(value.substr(0, blank)).rounded(std::stoi(value.substr(blank))).toString(), rounded) << value;
  }
  EXPECT_THROW(dec("1.5").rounded(-1), Errore);
}

TEST(Decimal, ReadsAndWritesText) {
  for (const auto& [text, shown] :
       inOut({"-0.50 => -0.50", "+7 => 7", ".5 => 0.5", "5. => 5", "1.5E3 => 1500", "15e-1 => 1.5",
              "000123.450 => 123.450", "-0 => 0", "0E9999999999 => 0", "1E-99999 => 0",
              "10000000000000000000 => 10000000000000000000", "100000000000000000000.5 => 100000000000000000000.5",
              "0.00000000000000000000000000005 => 0.0000000000000000000000000001",
              "1.23456789012345678901234567894 => 1.2345678901234567890123456789",
              "79228162514264337593543950335.49 => 79228162514264337593543950335",
              "7.92281625142643375935439503355 => 7.922816251426433759354395034"}))
    EXPECT_EQ(dec(text).toString(), shown) << text;
  for (const char* text :
       {"", "-", ".", "1,5", " 1", "1 ", "1.2.3", "E5", "1E", "1E+", "0x10", "1e5x", "--1", "INF", "nan"})
    EXPECT_FALSE(Decimal::TryParse(text)) << text;
  for (const char* text : {"79228162514264337593543950336", "1E29", "7.92281625142643375935439503369E28",
                           "79228162514264337593543950335.5", "1E999999999999"})
    EXPECT_THROW(Decimal::TryParse(text), Errore) << text;
}

TEST(Decimal, ComesFromDoublesByFifteenDigits) {
  for (const auto& [value, shown] : inOut(
           {"0.30000000000000004 => 0.3", "1234567.89 => 1234567.89", "-1e-7 => -0.0000001", "1e15 => 1000000000000000",
            "123456789012345678 => 123456789012346000", "0.33333333333333333 => 0.333333333333333", "0 => 0",
            "-0.0 => 0", "1000000000000.125 => 1000000000000.13", "999999999999999.5 => 1000000000000000", "1e-29 => 0",
            "7.9e28 => 79000000000000000000000000000", "2.675 => 2.675"}))
    EXPECT_EQ(Decimal::FromDouble(std::stod(value)).toString(), shown) << value;
  for (const double value : {8e28, -1e300, std::numeric_limits<double>::quiet_NaN()})
    EXPECT_THROW(Decimal::FromDouble(value), Errore);
  std::mt19937_64 random(3);
  for (int i = 0; i < 20'000; ++i) {
    const int scale = static_cast<int>(random() % 6);
    const auto units = static_cast<std::int64_t>(random() % 1'000'000'000'000'000);
    const Decimal exact = Decimal::FromScaled(units, scale);
    ASSERT_EQ(Decimal::FromDouble(exact.toDouble()), exact) << exact.toString();
  }
}

TEST(Decimal, ScaledUnitsRefuseToLoseDigits) {
  constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
  constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
  EXPECT_EQ(dec("1.230").toScaled(2), 123);
  EXPECT_EQ(dec("-1.2").toScaled(4), -12000);
  EXPECT_EQ(dec("1.234").toScaled(2), std::nullopt);
  EXPECT_EQ(Decimal::FromScaled(kLeast, 3).toScaled(3), kLeast);
  EXPECT_EQ(Decimal::FromScaled(kMost).toScaled(0), kMost);
  EXPECT_EQ((Decimal::FromScaled(kMost) + dec("1")).toScaled(0), std::nullopt);
  EXPECT_EQ((Decimal::FromScaled(kLeast) - dec("1")).toScaled(0), std::nullopt);
  EXPECT_EQ(dec("92233720368547758.07").toScaled(3), std::nullopt);
  EXPECT_EQ(dec("1.0000000000000000000000000000").toScaled(0), 1);
  EXPECT_EQ(dec("0").toScaled(400), 0);
  EXPECT_THROW(Decimal::FromScaled(1, 29), Errore);
  EXPECT_EQ(dec("0.99").integerDigits(), 0);
  EXPECT_EQ(dec("-1000.5").integerDigits(), 4);
  EXPECT_EQ(dec("79228162514264337593543950335").integerDigits(), 29);
  EXPECT_EQ(dec("100.00").normalized().toString(), "100");
  EXPECT_EQ(dec("10000000000000000000000.1000").normalized().toString(), "10000000000000000000000.1");
}

}  // namespace
