#include "support/Test.h"

namespace {

using namespace values;

bool isLeap(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

TEST(Date, EveryDayOfTwoCenturiesComesBack) {
  constexpr int kLengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  Date expected = Date::FromYmd(1899, 12, 31);
  for (int year = 1900; year <= 2100; ++year) {
    for (int month = 1; month <= 12; ++month) {
      const int last = kLengths[month - 1] + (month == 2 && isLeap(year) ? 1 : 0);
      for (int day = 1; day <= last; ++day) {
        expected = expected.addDays(1);
        const Date date = Date::FromYmd(year, month, day);
        ASSERT_EQ(date, expected);
        ASSERT_EQ(date.year() * 10'000 + date.month() * 100 + date.day(), year * 10'000 + month * 100 + day);
      }
      ASSERT_EQ(Date::FromYmd(year, month, 1).lastOfMonth(), expected);
      ASSERT_EQ(Date::TryParse(expected.toSql()), expected);
      ASSERT_EQ(Date::TryParse(expected.toText()), expected);
      ASSERT_EQ(Date::Serial(year, month + 1, 0), expected);
      ASSERT_THROW(Date::FromYmd(year, month, last + 1), Errore);
    }
  }
  EXPECT_EQ(Date::FromYmd(1900, 1, 1).dayNumber(), 2);
  EXPECT_EQ(Date::FromYmd(2011, 1, 31).dayNumber(), 40574);
}

TEST(Date, StepsByMonths) {
  for (const auto& [from, to] :
       inOut({"20120131 1 => 20120229", "20110131 1 => 20110228", "20120229 12 => 20130228", "20110331 -1 => 20110228",
              "20110115 -13 => 20091215", "20111201 1 => 20120101"}))
    EXPECT_EQ(Date::TryParse(from.substr(0, 8))->addMonths(std::stoi(from.substr(8))).toSql(), to);
  EXPECT_EQ(Date::FromYmd(2011, 5, 30, 8, 5, 9).addMonths(0).toSql(), "20110530 08:05:09");
  EXPECT_EQ(monthsBetween(Date::FromYmd(2011, 1, 31), Date::FromYmd(2011, 2, 1)), 1);
  EXPECT_EQ(monthsBetween(Date::FromYmd(2012, 1, 1), Date::FromYmd(2010, 11, 30)), -14);
  EXPECT_EQ(daysBetween(Date::FromYmd(2012, 2, 28, 23), Date::FromYmd(2012, 3, 1)), 2);
  EXPECT_EQ(Date::Serial(2011, 13, 1).toText(), "01/01/2012");
  EXPECT_EQ(Date::Serial(2011, 2, 30).toText(), "02/03/2011");
  EXPECT_EQ(Date::Serial(2011, 0, 0).toText(), "30/11/2010");
  EXPECT_EQ(Date::FromYmd(2011, 5, 30, 8).firstOfMonth().toText(), "01/05/2011");
}

TEST(Date, RangeEndsAreErrors) {
  constexpr int kHuge = std::numeric_limits<int>::max();
  EXPECT_THROW(Date::FromYmd(9999, 12, 31).addDays(1), Errore);
  EXPECT_THROW(Date::FromYmd(1753, 1, 1).addMonths(-1), Errore);
  EXPECT_THROW(Date::FromYmd(2011, 1, 1).addDays(kHuge), Errore);
  EXPECT_THROW(Date::FromYmd(2011, 1, 1).addMonths(kHuge), Errore);
  EXPECT_THROW(Date::FromYmd(2011, 1, 1).addMonths(-kHuge), Errore);
  EXPECT_THROW(Date::Serial(kHuge, kHuge, kHuge), Errore);
  EXPECT_THROW(Date::Serial(1753, 1, 0), Errore);
  EXPECT_THROW(Date::FromYmd(1752, 12, 31), Errore);
  EXPECT_THROW(Date::FromYmd(2011, 1, 1, 24), Errore);
  EXPECT_EQ(Date::FromYmd(9999, 12, 15).lastOfMonth().toSql(), "99991231");
  EXPECT_EQ(Date::FromYmd(9999, 12, 30).addDays(1).toSql(), "99991231");
  EXPECT_EQ(Date::FromYmd(1753, 1, 2).addDays(-1).toSql(), "17530101");
  EXPECT_THROW(Date::FromYmd(1753, 1, 1).addDays(-1), Errore);
  EXPECT_EQ(Date::FromYmd(1753, 1, 1).addMonths(12 * 8246).toSql(), "99990101");
}

TEST(Date, ReadsItsNotationsOnly) {
  for (const auto& [text, sql] :
       inOut({"31/01/2011 => 20110131", " 01/01/2025 => 20250101", "1/2/2025 => 20250201", "2025-1-9  => 20250109",
              "20110131 => 20110131", "2011-01-31 => 20110131", "2011-01-31T23:59 => 20110131 23:59:00",
              "31/01/2011 08:05:09 => 20110131 08:05:09", "29/02/2012 00:00:00 => 20120229",
              "20110131 12:00:01 => 20110131 12:00:01"})) {
    const auto date = Date::TryParse(text);
    ASSERT_TRUE(date) << text;
    EXPECT_EQ(date->toSql(), sql);
  }
  for (const char* text : {"", " ", "29/02/2011", "1/1/11", "/1/2011", "31/01/11", "2011013", "201101311", "2011-0131",
                           "201101-31", "2011-1-"})
    EXPECT_FALSE(Date::TryParse(text)) << text;
  for (const char* text : {"20110131 24:00", "20110131 12", "20110131 12:00:", "20110131 12:60", "20110131X12:00",
                           "31-01-2011", "31/13/2011", "00000000", "31/0a/2011", "2011-01-31 1:00"})
    EXPECT_FALSE(Date::TryParse(text)) << text;
}

TEST(Date, NowIsAPossibleDate) {
  const Date before = Date::Now();
  EXPECT_GT(before, Date::FromYmd(2020, 1, 1));
  EXPECT_LE(before, Date::Now());
}

}  // namespace
