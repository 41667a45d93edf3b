#include "elaschede/TotaliMovimenti.h"
#include "support/DayShares.h"
#include "support/TestContext.h"

namespace {

using namespace bukorval;

/// What a movement adds to each calendar month, in cents.
using Months = std::array<std::int64_t, 13>;

/// One random movement and its months by either kind of date, by counting days.
struct Movement {
  std::vector<Variant> row;
  Months byRegistration{}, byCompetence{};
};

Movement randomMovement(std::mt19937_64& random, bool cost) {
  const auto between = [&](std::int64_t a, std::int64_t b) {
    return std::uniform_int_distribution<std::int64_t>(a, b)(random);
  };
  const auto near = [&](Date date, int from, int to) { return date.addDays(static_cast<int>(between(from, to))); };
  const auto month = [](Date date) { return static_cast<std::size_t>(date.month()); };
  const Date registered = near(Date::FromYmd(2011, 7, 1), 0, 365);
  const bool hasDocument = between(0, 1) == 1;
  const Date document = near(registered, -60, 0);
  const int accrual = between(0, 9) == 0 ? 4 : 0;
  const bool hasStart = between(0, 1) == 1, hasEnd = between(0, 1) == 1;
  const Date start = near(registered, -400, 100);
  const Date end = near(start, 0, 900);
  const int side = static_cast<int>(between(1, 2));
  const std::int64_t cents = between(0, 19) == 0 ? 0 : between(-10'000'000, 10'000'000);
  Movement m;
  m.row = {registered,
           hasDocument ? Variant(document) : Variant::Null(),
           hasStart ? Variant(start) : Variant::Null(),
           hasEnd ? Variant(end) : Variant::Null(),
           accrual,
           side,
           Decimal::FromScaled(cents, 2)};
  const std::int64_t signedCents = side == (cost ? 2 : 1) ? -cents : cents;
  m.byRegistration[month(registered)] = signedCents;
  if (accrual == 4 || (!hasStart && !hasEnd))
    m.byCompetence[month(hasDocument ? document : registered)] = signedCents;
  else
    m.byCompetence = testing_support::countedShares(signedCents, hasStart ? start : end, hasEnd ? end : start);
  return m;
}

/// The periods that a run goes through, in order, as text.
PeriodiElaborazione periodsToElaborate(Contesto& ctx) {
  PeriodiElaborazione periods;
  periods.daElaborare = std::make_shared<ado::Dictionary>();
  GetDictPeriodiDaElaborare(ctx, periods);
  EXPECT_EQ(ctx.stato(), bdgStatoOk) << ctx.errore();
  return periods;
}

TEST(TotaliMovimenti, RandomCardsEqualACountInIntegers) {
  std::mt19937_64 random(4041);
  for (int round = 0; round < 120; ++round) {
    testing_support::TestContext context;
    auto& data = context.ctx.dati;
    const int count = std::array{12, 6, 4, 3, 2, 1}[static_cast<std::size_t>(round % 6)];
    const int firstMonth = round % 2 == 0 ? 1 : 7;
    const bool cost = round % 4 < 2;
    data.periodicita = round % 6;
    data.numeroPeriodi = data.periodoFinale = count;
    data.fiscaleSolare = 0;
    data.dataInizio = Date::FromYmd(2011, firstMonth, 1);
    data.periodoIniziale = 1;
    context.prop.BdgTipoScheda = cost ? 0 : 1;
    const auto periods = periodsToElaborate(context.ctx);
    EXPECT_EQ(periods.daElaborare->Count(), static_cast<std::size_t>(count));

    std::vector<std::vector<Variant>> rows;
    std::array<Months, 2> expected{};
    for (int i = 0; i < 40; ++i) {
      const auto movement = randomMovement(random, cost);
      rows.push_back(movement.row);
      for (int month = 1; month <= 12; ++month) {
        const auto period = static_cast<std::size_t>((month - firstMonth + 12) % 12 / (12 / count) + 1);
        expected[0][period] += movement.byRegistration[static_cast<std::size_t>(month)];
        expected[1][period] += movement.byCompetence[static_cast<std::size_t>(month)];
      }
    }
    const auto movements =
        testing_support::rows({"CG41_DATAREG", "CG41_DATADOC", "CG42_DATAINICOMP", "CG42_DATAFINCOMP", "CG42_INDRATRIS",
                               "CG42_INDDAAV", "CG42_IMPTOTALE"},
                              rows);
    for (const std::size_t kind : {0u, 1u}) {
      TotaliMovimenti sums;
      const auto add =
          kind == 0 ? BdgElaSchede_GetTotaliMovimentiPerPeriodo(context.ctx, periods, sums, *movements)
                    : BdgElaSchede_GetTotaliMovimentiPerPeriodoDiCompetenza(context.ctx, periods, sums, *movements);
      for (movements->MoveFirst(); !movements->Eof(); movements->MoveNext()) add();
      const auto totals = BdgElaSchede_GetRstBdgSchedeConsuntiviDaElaborare(context.ctx);
      sums.scrivi(*totals);
      ASSERT_EQ(context.outcome(), "0 ");
      for (totals->MoveFirst(); !totals->Eof(); totals->MoveNext()) {
        const auto period = static_cast<std::size_t>(values::toInt32((*totals)["PERIODO"].Value()));
        const auto amount = values::toDecimal(values::nvl((*totals)["IMPORTO"].Value(), 0));
        EXPECT_EQ(amount.toScaled(2), expected[kind][period])
            << "round " << round << " date kind " << kind << " period " << period;
      }
    }
  }
}

TEST(TotaliMovimenti, ARangeAcrossTheTurnOfTheYearIsEnteredDownwards) {
  testing_support::TestContext context;
  auto& data = context.ctx.dati;
  data.numeroPeriodi = 12;
  data.fiscaleSolare = 1;
  data.dataInizio = Date::FromYmd(2011, 7, 1);
  data.periodoIniziale = 7;
  data.periodoFinale = 6;
  const struct {
    Variant from, to;
    const char* periods;
  } rows[] = {{Date::FromYmd(2011, 11, 1), Date::FromYmd(2012, 2, 29), "11 10 9 8 7 6 5 4 3 2 "},
              {Date::FromYmd(2011, 9, 1), Date::FromYmd(2011, 11, 30), "9 10 11 "},
              {Date::FromYmd(2011, 1, 1), Date::FromYmd(2012, 6, 30), "7 6 "},
              {{}, Date::FromYmd(2012, 6, 30), "7 6 "}};
  for (const auto& row : rows) {
    context.prop.DaData = row.from;
    context.prop.AData = row.to;
    std::string text;
    const auto periods = periodsToElaborate(context.ctx);
    for (const auto& key : periods.daElaborare->Keys()) text += values::toPlainText(key) + " ";
    EXPECT_EQ(text, row.periods);
  }
}

}  // namespace
