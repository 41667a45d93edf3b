#include "dupschede/DateDuplicazione.h"
#include "support/TestContext.h"

namespace {

using namespace bukorval;

TEST(DateDuplicazione, DatesKeepTheirPlaceInTheYear) {
  const struct {
    const char *date, *source, *destination, *moved;
  } rows[] = {
      {"20110131", "20110101", "20120101", "20120131"},
      {"20120229", "20120101", "20130101", "20130228"},
      {"20110228", "20110101", "20120101", "20120229"},
      {"20120228", "20120101", "20130101", "20130228"},
      {"20110130", "20110101", "20110701", "20110730"},
      {"20110615", "20110101", "20110701", "20111215"},
      // 30 August falls on the eighth month; from July that is February, which has no 30th.
      {"20110830", "20110101", "20110701", "20120301"},
      {"20101210", "20110101", "20120101", "20111210"},
      {"20120310", "20110101", "20120101", "20130310"},
  };
  testing_support::TestContext context;
  const auto day = [](const char* text) { return Variant(*Date::TryParse(text)); };
  for (const auto& row : rows) {
    const auto moved = BdgDupSchede_AttualizzaData(context.ctx, day(row.date), day(row.source), day(row.destination));
    EXPECT_EQ(moved, day(row.moved)) << row.date;
  }
  EXPECT_TRUE(BdgDupSchede_AttualizzaData(context.ctx, Variant::Null(), day("20110101"), day("20120101")).isEmpty());
}

}  // namespace
