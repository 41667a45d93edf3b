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

}  // namespace
