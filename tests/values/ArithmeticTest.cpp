#include "support/Test.h"
#include "values/Arithmetic.h"

namespace {

using namespace values;

TEST(Arithmetic, KindsFollowTheirOperands) {
  const auto shortOf = [](int v) { return Variant(static_cast<std::int16_t>(v)); };
  EXPECT_TRUE(add(Variant::Null(), 1).isNull());
  EXPECT_TRUE(divide(1, Variant::Null()).isNull());
  EXPECT_EQ(add(shortOf(1), shortOf(2)), shortOf(3));
  EXPECT_EQ(add(shortOf(32767), shortOf(1)), Variant(32768));
  EXPECT_EQ(multiply(2'000'000'000, 4), Variant(dec("8000000000")));
  EXPECT_EQ(subtract(Variant(), 5), Variant(-5));
  EXPECT_EQ(add(0.5, dec("0.10")), Variant(dec("0.60")));
  EXPECT_EQ(add(1, 0.5), Variant(1.5));
  EXPECT_EQ(add("1,10", 2), Variant(dec("3.10")));
  EXPECT_EQ(divide(1, 4), Variant(0.25));
  EXPECT_EQ(divide(dec("1"), 8), Variant(dec("0.125")));
  EXPECT_EQ(errorOf([] { divide(1, 0); }), "Division by zero");
  EXPECT_EQ(errorOf([] { divide(dec("1"), 0); }), "Division by zero");
  EXPECT_EQ(errorOf([] { multiply(1e300, 1e300); }), "Overflow");
  EXPECT_EQ(errorOf([] { add(Date::FromYmd(2011, 1, 1), 1); }), "Type mismatch: dates and objects take no arithmetic");
}

TEST(Arithmetic, ComparesAcrossKinds) {
  const struct {
    Variant a, b;
    int order;
  } kRows[] = {{1, 1.0, 0},
               {dec("1.00"), 1, 0},
               {0.1, dec("0.1"), 0},
               {"10", 9, 1},
               {"1,50", dec("1.5"), 0},
               {"10", "9", -1},
               {"a", "A", 1},
               {Variant(), 0, 0},
               {Variant(), "", 0},
               {1e40, dec("1"), 1},
               {-1e40, 3, -1},
               {true, -1, 0},
               {Date::FromYmd(2011, 1, 1), Date::FromYmd(2011, 1, 1, 0, 0, 1), -1},
               {Date::FromYmd(2011, 1, 31), "31/01/2011", 0},
               {40573, Date::FromYmd(2011, 1, 31), -1}};
  for (const auto& row : kRows) {
    EXPECT_EQ(compare(row.a, row.b), row.order);
    EXPECT_EQ(compare(row.b, row.a), -row.order);
  }
  EXPECT_EQ(errorOf([] { compare(Variant::Null(), 1); }), "Invalid use of Null");
  EXPECT_EQ(errorOf([] { compare("abc", 1); }), "Type mismatch: \"abc\" is no number");
}

}  // namespace
