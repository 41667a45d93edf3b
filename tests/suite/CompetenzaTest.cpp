#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <random>

#include "suite/Competenza.h"

namespace suite {
namespace {

using values::Date;
using values::Decimal;

/// The shares in cents by counting every day of the interval, in integers only.
std::array<std::int64_t, 13> quoteContate(std::int64_t centesimi, Date inizio, Date fine) {
  std::array<std::int64_t, 13> giorni{};
  std::int64_t totale = 0;
  for (Date d = inizio; d <= fine; d = d.addDays(1)) {
    ++giorni[static_cast<std::size_t>(d.month())];
    ++totale;
  }
  std::array<std::int64_t, 13> quote{};
  std::int64_t resto = centesimi;
  for (std::size_t mese = 1; mese <= 12 && totale > 0; ++mese) {
    const std::int64_t doppio = 2 * centesimi * giorni[mese];
    const std::int64_t segno = doppio < 0 ? -1 : 1;
    quote[mese] = segno * ((segno * doppio + totale) / (2 * totale));
    resto -= quote[mese];
  }
  quote[static_cast<std::size_t>(fine.month())] += resto;
  return quote;
}

TEST(Competenza, RandomAmountsAndIntervalsAddUpToTheCent) {
  std::mt19937_64 caso(20111231);
  std::uniform_int_distribution<std::int64_t> centesimi(-500'000'000, 500'000'000);
  std::uniform_int_distribution<int> giornoIniziale(0, 4000);
  std::uniform_int_distribution<int> lunghezza(0, 2);
  for (int i = 0; i < 3000; ++i) {
    const Date inizio = Date::FromYmd(2007, 1, 1).addDays(giornoIniziale(caso));
    // One day, up to two months, up to three years; leap days fall inside.
    const int massimo = std::array{0, 60, 1100}[static_cast<std::size_t>(lunghezza(caso))];
    const Date fine = inizio.addDays(std::uniform_int_distribution<int>(0, massimo)(caso));
    const std::int64_t importo = i % 50 == 0 ? 0 : centesimi(caso);
    const auto attese = quoteContate(importo, inizio, fine);
    const auto quote = ripartisciPerMese(Decimal::FromScaled(importo, 2), inizio, fine);
    Decimal somma;
    for (std::size_t mese = 1; mese <= 12; ++mese) {
      EXPECT_EQ(quote[mese], Decimal::FromScaled(attese[mese], 2))
          << "month " << mese << " of " << importo << " from " << inizio.toSql() << " to " << fine.toSql();
      somma = somma + quote[mese];
    }
    ASSERT_EQ(somma, Decimal::FromScaled(importo, 2));
  }
}

/// The situation asks month by month, the card elaboration for all months at once.
TEST(Competenza, TheMonthsOfARangeAreTheMonthsOfTheSpread) {
  EXPECT_EQ(quotaNelPeriodo(Decimal::FromScaled(100, 2), Date::FromYmd(2025, 1, 1), Date::FromYmd(2025, 3, 31),
                            Date::FromYmd(2025, 2, 1), Date::FromYmd(2025, 2, 28)),
            Decimal::FromScaled(31, 2));
  std::mt19937_64 caso(20250331);
  std::uniform_int_distribution<std::int64_t> centesimi(-1'000, 1'000);
  for (int i = 0; i < 500; ++i) {
    const Date inizio = Date::FromYmd(2023, 1, 1).addDays(std::uniform_int_distribution<int>(0, 700)(caso));
    const Date fine = inizio.addDays(std::uniform_int_distribution<int>(0, 900)(caso));
    const auto importo = Decimal::FromScaled(centesimi(caso), 2);
    QuoteMensili lette{};
    for (Date mese = inizio.firstOfMonth(); mese <= fine; mese = mese.addMonths(1)) {
      // Two ranges a month, met in its middle: no cent is lost or counted twice between them.
      const Date meta = mese.addDays(std::uniform_int_distribution<int>(0, 27)(caso));
      auto& letta = lette[static_cast<std::size_t>(mese.month())];
      letta = letta + quotaNelPeriodo(importo, inizio, fine, mese, meta) +
              quotaNelPeriodo(importo, inizio, fine, meta.addDays(1), mese.lastOfMonth());
    }
    ASSERT_EQ(lette, ripartisciPerMese(importo, inizio, fine)) << inizio.toSql() << " to " << fine.toSql();
  }
}

TEST(Competenza, AHalfCentRoundsAwayFromZeroEvenWhenTheDailyAmountDoesNotEnd) {
  // 0.05 over 6 days, 3 in each month: 0.025 each.
  const auto quote =
      ripartisciPerMese(Decimal::FromScaled(5, 2), Date::FromYmd(2011, 1, 29), Date::FromYmd(2011, 2, 3));
  EXPECT_EQ(quote[1], Decimal::FromScaled(3, 2));
  EXPECT_EQ(quote[2], Decimal::FromScaled(2, 2));
}

TEST(Competenza, AnIntervalThatEndsBeforeItStartsGoesToTheMonthOfItsEnd) {
  for (const auto& fine : {Date::FromYmd(2011, 4, 30), Date::FromYmd(2011, 2, 10)}) {
    const auto quote = ripartisciPerMese(Decimal::FromScaled(1000, 2), Date::FromYmd(2011, 5, 1), fine);
    EXPECT_EQ(quote[static_cast<std::size_t>(fine.month())], Decimal::FromScaled(1000, 2));
  }
}

}  // namespace
}  // namespace suite
