#include <numeric>
#include <sstream>

#include "suite/Competenza.h"
#include "support/DayShares.h"

namespace {

using namespace suite;

TEST(Competenza, RandomAmountsAndIntervalsAddUpToTheCent) {
  std::mt19937_64 random(20111231);
  std::uniform_int_distribution<std::int64_t> cents(-500'000'000, 500'000'000);
  std::uniform_int_distribution<int> firstDay(0, 4000), length(0, 2);
  for (int i = 0; i < 3000; ++i) {
    const Date from = Date::FromYmd(2007, 1, 1).addDays(firstDay(random));
    // One day, up to two months, up to three years; leap days fall inside.
    const int most = std::array{0, 60, 1100}[static_cast<std::size_t>(length(random))];
    const Date to = from.addDays(std::uniform_int_distribution<int>(0, most)(random));
    const std::int64_t amount = i % 50 == 0 ? 0 : cents(random);
    const auto expected = testing_support::countedShares(amount, from, to);
    const auto shares = ripartisciPerMese(Decimal::FromScaled(amount, 2), from, to);
    Decimal sum;
    for (std::size_t month = 1; month <= 12; ++month) {
      EXPECT_EQ(shares[month], Decimal::FromScaled(expected[month], 2))
          << "month " << month << " of " << amount << " from " << from.toSql() << " to " << to.toSql();
      sum = sum + shares[month];
    }
    ASSERT_EQ(sum, Decimal::FromScaled(amount, 2));
  }
  // A half cent rounds away from zero even when the daily amount does not end: 0.05 over 6 days, 3 in each month.
  const auto halves =
      ripartisciPerMese(Decimal::FromScaled(5, 2), Date::FromYmd(2011, 1, 29), Date::FromYmd(2011, 2, 3));
  EXPECT_EQ(halves[1], Decimal::FromScaled(3, 2));
  EXPECT_EQ(halves[2], Decimal::FromScaled(2, 2));
}

/// The situation asks month by month, the card elaboration for all months at once.
TEST(Competenza, TheMonthsOfARangeAreTheMonthsOfTheSpread) {
  EXPECT_EQ(quotaNelPeriodo(Decimal::FromScaled(100, 2), Date::FromYmd(2025, 1, 1), Date::FromYmd(2025, 3, 31),
                            Date::FromYmd(2025, 2, 1), Date::FromYmd(2025, 2, 28)),
            Decimal::FromScaled(31, 2));
  std::mt19937_64 random(20250331);
  const auto between = [&](int a, int b) { return std::uniform_int_distribution<int>(a, b)(random); };
  for (int i = 0; i < 500; ++i) {
    const Date from = Date::FromYmd(2023, 1, 1).addDays(between(0, 700));
    const Date to = from.addDays(between(0, 900));
    const auto amount = Decimal::FromScaled(between(-1'000, 1'000), 2);
    QuoteMensili read{};
    for (Date month = from.firstOfMonth(); month <= to; month = month.addMonths(1)) {
      // Two ranges a month, met in its middle: no cent is lost or counted twice between them.
      const Date middle = month.addDays(between(0, 27));
      auto& share = read[static_cast<std::size_t>(month.month())];
      share = share + quotaNelPeriodo(amount, from, to, month, middle) +
              quotaNelPeriodo(amount, from, to, middle.addDays(1), month.lastOfMonth());
    }
    ASSERT_EQ(read, ripartisciPerMese(amount, from, to)) << from.toSql() << " to " << to.toSql();
  }
}

TEST(Competenza, AnIntervalThatEndsBeforeItStartsGoesToTheMonthOfItsEnd) {
  for (const auto& end : {Date::FromYmd(2011, 4, 30), Date::FromYmd(2011, 2, 10)}) {
    const auto shares = ripartisciPerMese(Decimal::FromScaled(1000, 2), Date::FromYmd(2011, 5, 1), end);
    EXPECT_EQ(shares[static_cast<std::size_t>(end.month())], Decimal::FromScaled(1000, 2));
  }
}

TEST(Competenza, ARangeOutsideTheIntervalHasNothingOfIt) {
  const auto share = [](const Date& from, const Date& to) {
    return quotaNelPeriodo(Decimal::FromScaled(9000, 2), Date::FromYmd(2025, 1, 1), Date::FromYmd(2025, 3, 31), from,
                           to)
        .rounded(2)
        .toString();
  };
  EXPECT_EQ(share(Date::FromYmd(2024, 12, 1), Date::FromYmd(2024, 12, 31)), "0");
  EXPECT_EQ(share(Date::FromYmd(2025, 4, 1), Date::FromYmd(2025, 4, 30)), "0");
  EXPECT_EQ(share(Date::FromYmd(2024, 12, 1), Date::FromYmd(2025, 1, 1)), "1.00") << "its first day";
  EXPECT_EQ(share(Date::FromYmd(2025, 3, 31, 8), Date::FromYmd(2025, 6, 30)), "1.00") << "its last day";
  EXPECT_EQ(share(Date::FromYmd(2020, 1, 1), Date::FromYmd(2030, 1, 1)), "90.00");
}

TEST(Competenza, WeightsShareToTheCentTheLargestFractionsFirst) {
  const struct {
    const char *amount, *weights;
    int decimals;
    const char* shares;
  } kRows[] = {{"100.00", "1 1 1", 2, "33.34 33.33 33.33"},
               {"0.05", "1 1 1", 2, "0.02 0.02 0.01"},
               {"0.01", "1 2 3", 2, "0.00 0.00 0.01"},
               {"0.01", "1 1 1", 2, "0.01 0.00 0.00"},
               {"-100.00", "1 1 1", 2, "-33.34 -33.33 -33.33"},
               {"10.00", "0 3 0 1", 2, "0.00 7.50 0.00 2.50"},
               {"0.02", "0 1 0 1 1", 2, "0.00 0.01 0.00 0.01 0.00"},
               {"1000.01", "90 91 92 92", 2, "246.58 249.32 252.06 252.05"},
               {"0.00", "1 2", 2, "0.00 0.00"},
               {"1.000", "1 1 1", 3, "0.334 0.333 0.333"},
               {"0.001", "5 4", 3, "0.001 0.000"},
               {"9999999999999.99", "1 1", 2, "5000000000000.00 4999999999999.99"},
               {"9999999999999.99", "9999999999999.99 0.01", 2, "9999999999999.98 0.01"},
               {"100.00", "5", 2, "100.00"}};
  const auto decimal = [](const std::string& text) { return *Decimal::TryParse(text); };
  for (const auto& row : kRows) {
    std::vector<Decimal> weights;
    std::istringstream in(row.weights);
    for (std::string weight; in >> weight;) weights.push_back(decimal(weight));
    std::string text;
    Decimal sum;
    for (const auto& share : ripartisciPerPesi(decimal(row.amount), weights, row.decimals)) {
      text += (text.empty() ? "" : " ") + share.rounded(row.decimals).toString();
      sum = sum + share;
    }
    EXPECT_EQ(text, row.shares) << row.amount << " by " << row.weights;
    EXPECT_EQ(sum, decimal(row.amount)) << row.amount << " by " << row.weights;
  }
}

TEST(Competenza, OfManyEqualWeightsTheFirstGetTheCents) {
  const auto shares = ripartisciPerPesi(Decimal::FromScaled(7, 2), std::vector(40, Decimal::FromScaled(1)), 2);
  for (std::size_t i = 0; i < shares.size(); ++i) EXPECT_EQ(shares[i], Decimal::FromScaled(i < 7 ? 1 : 0, 2)) << i;
}

TEST(Competenza, NoWeightedShareIsACentFromItsDue) {
  std::mt19937_64 random(77);
  for (int i = 0; i < 2000; ++i) {
    const auto cents = std::uniform_int_distribution<std::int64_t>(-10'000'000, 10'000'000)(random);
    std::vector<Decimal> weights;
    std::vector<std::int64_t> units;
    for (auto count = random() % 12 + 1; count > 0; --count)
      units.push_back(static_cast<std::int64_t>(random() % 1000));
    if (std::accumulate(units.begin(), units.end(), std::int64_t{0}) == 0) continue;
    for (const auto unit : units) weights.push_back(Decimal::FromScaled(unit));
    const auto total = std::accumulate(units.begin(), units.end(), std::int64_t{0});
    const auto shares = ripartisciPerPesi(Decimal::FromScaled(cents, 2), weights, 2);
    std::int64_t sum = 0;
    for (std::size_t at = 0; at < shares.size(); ++at) {
      const auto share = shares[at].toScaled(2);
      ASSERT_TRUE(share);
      sum += *share;
      // |share * total - cents * weight| < total, all in whole numbers.
      ASSERT_LT(std::abs(*share * total - cents * units[at]), total) << cents << " " << units[at] << "/" << total;
    }
    ASSERT_EQ(sum, cents);
  }
}

}  // namespace
