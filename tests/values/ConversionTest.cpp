#include "support/Test.h"
#include "values/NumberText.h"

namespace {

using namespace values;

TEST(Conversion, ReadsNumbersByTheSeparator) {
  const auto reads = [](char separator, const std::vector<std::pair<std::string, std::string>>& rows) {
    for (const auto& [text, number] : rows) {
      EXPECT_EQ(toDecimal(text, separator), dec(number)) << text;
      EXPECT_EQ(toDouble(text, separator), dec(number).toDouble()) << text;
    }
  };
  reads(',', inOut({"1234,56 => 1234.56", "1.234,56 => 1234.56", "-1.234.567,8 => -1234567.8", "  12,5  => 12.5",
                    "1.234.567 => 1234567", "1,5E3 => 1500", ",5 => 0.5", "+3 => 3", "1.234 => 1234"}));
  reads('.', inOut({"1234.56 => 1234.56", "1,234.56 => 1234.56", "1.234 => 1.234", "-1,000 => -1000"}));
  const auto refuses = [](char separator, std::initializer_list<std::string> texts) {
    for (const auto& text : texts) {
      const std::string message = "Type mismatch: \"" + text + "\" is no number";
      EXPECT_EQ(errorOf([&] { toDecimal(text, separator); }), message);
      EXPECT_EQ(errorOf([&] { toDouble(text, separator); }), message);
    }
  };
  refuses(',', {"", "  ", "abc", "1.23,4", "1234.567,8", "1,2,3", "1,234.56", ".123,4", "1..234,5", "1.234.56",
                "1234.56", "12.5", "1.2a4,5", "1 000", "-", "1,5-", "12 EUR", "+-1", "inf"});
  refuses('.', {"1.234,56", "1234,56", "1.234.567", "1,234,"});
}

TEST(Conversion, WhatCouldBeReadTwoWaysIsNotTyped) {
  const auto typed = [](char separator, std::initializer_list<std::string_view> rows) {
    for (const auto& [text, number] : inOut(rows)) {
      const auto read = [&, &text = text] { return typedNumber(text, separator); };
      if (number == "refused")
        EXPECT_THROW(read(), Errore) << text;
      else
        EXPECT_EQ(read(), number) << text;
    }
  };
  typed(',', {"7.250,50 => 7250.50", "12.5 => 12.5", "0.500 => 0.500", "1234.567 => 1234.567", "1,500 => 1.500",
              "1.000.000 => 1000000", "12.50 => 12.50", "1.000 => refused", "-1.000 => refused", "abc => refused",
              " => refused", "1.2.3 => refused", "1., => refused"});
  typed('.', {"1,000 => refused", "1.000 => 1.000", "1,5 => 1.5"});
}

TEST(Conversion, IntegersRoundHalvesToEvenAndOverflow) {
  const struct {
    Variant value;
    std::int64_t whole;
  } kGood[] = {{2.5, 2},
               {3.5, 4},
               {-2.5, -2},
               {"2,5", 2},
               {"3,5", 4},
               {dec("-3.5"), -4},
               {dec("2.51"), 3},
               {dec("-0.5"), 0},
               {true, -1},
               {Variant(), 0},
               {dec("32767.4"), 32767},
               {"-32768", -32768},
               {Date::FromYmd(1900, 1, 1), 2}};
  for (const auto& row : kGood) {
    EXPECT_EQ(toInt16(row.value), row.whole);
    EXPECT_EQ(toInt64(row.value), row.whole);
  }
  const auto overflows = [](const std::function<void()>& action) { return errorOf(action) == "Overflow"; };
  EXPECT_TRUE(overflows([] { toInt16(32768); }));
  EXPECT_TRUE(overflows([] { toInt16(32767.5); }));
  EXPECT_TRUE(overflows([] { toInt32(dec("2147483647.5")); }));
  EXPECT_TRUE(overflows([] { toInt32(-1e300); }));
  EXPECT_TRUE(overflows([] { toInt32(std::numeric_limits<double>::quiet_NaN()); }));
  EXPECT_TRUE(overflows([] { toInt64(9.3e18); }));
  EXPECT_TRUE(overflows([] { toInt64(9223372036854775808.0); }));
  EXPECT_EQ(toInt64(-9223372036854775808.0), std::numeric_limits<std::int64_t>::min());
  EXPECT_TRUE(overflows([] { toInt64("9223372036854775808"); }));
  EXPECT_TRUE(overflows([] { toDecimal("1E40"); }));
  EXPECT_TRUE(overflows([] { toDouble("1E400"); }));
  EXPECT_EQ(toInt64("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
}

TEST(Conversion, WritesText) {
  const struct {
    Variant value;
    const char *shown, *plain;
  } kRows[] = {{Variant(), "", ""},
               {-7, "-7", "-7"},
               {dec("1234.50"), "1234,50", "1234.50"},
               {0.1, "0,1", "0.1"},
               {1e30, "1E+30", "1E+30"},
               {-0.0, "0", "0"},
               {true, "True", "True"},
               {"a.b", "a.b", "a.b"},
               {Date::FromYmd(2011, 1, 31, 8, 0, 1), "31/01/2011 08:00:01", "31/01/2011 08:00:01"}};
  for (const auto& row : kRows) {
    EXPECT_EQ(toText(row.value), row.shown);
    EXPECT_EQ(toPlainText(row.value), row.plain);
  }
  EXPECT_EQ(toPlainText(Variant::Null()), "");
  EXPECT_EQ(errorOf([] { toText(Variant::Null()); }), "Invalid use of Null");
  EXPECT_EQ(errorOf([] { toDecimal(Variant::Null()); }), "Invalid use of Null");
  EXPECT_EQ(errorOf([] { toInt32(Variant(std::make_shared<Object>())); }), "Type mismatch: an object is no number");
}

TEST(Conversion, DatesAndBooleans) {
  EXPECT_EQ(toDate(" 31/01/2011 "), Date::FromYmd(2011, 1, 31));
  EXPECT_EQ(toDate(40574), Date::FromYmd(2011, 1, 31));
  EXPECT_EQ(toDate(40574.75), Date::FromYmd(2011, 1, 31, 18));
  EXPECT_EQ(toDate(toDouble(Date::FromYmd(2011, 12, 31, 23, 59, 59))), Date::FromYmd(2011, 12, 31, 23, 59, 59));
  EXPECT_EQ(errorOf([] { toDate(Variant()); }), "Type mismatch: an empty value is no date");
  EXPECT_EQ(errorOf([] { toDate("31/02/2011"); }), "Type mismatch: \"31/02/2011\" is no date");
  EXPECT_EQ(errorOf([] { toDate(1e9); }), "Overflow");
  EXPECT_EQ(errorOf([] { toDate(-60000); }), "Overflow");
  EXPECT_TRUE(toBool(" true "));
  EXPECT_FALSE(toBool("False"));
  EXPECT_FALSE(toBool("0,00"));
  EXPECT_TRUE(toBool(0.5));
  EXPECT_EQ(errorOf([] { toBool("vero"); }), "Type mismatch: \"vero\" is no number");
}

TEST(Conversion, BlankValuesGiveWay) {
  const Variant other = 7;
  for (const Variant& blank : {Variant(), Variant::Null(), Variant(""), Variant("   ")}) {
    EXPECT_TRUE(isBlank(blank));
    EXPECT_EQ(nvl(blank, other), other);
  }
  for (const Variant& kept : {Variant(0), Variant(false), Variant(" a "), Variant("\t"), Variant(0.0)}) {
    EXPECT_FALSE(isBlank(kept));
    EXPECT_EQ(nvl(kept, other), kept);
  }
}

}  // namespace
