#include "support/Test.h"
#include "values/Text.h"

namespace {

using namespace values;

TEST(Text, CountsCharactersNotBytes) {
  EXPECT_EQ(length("perché"), 6U);
  EXPECT_EQ(length("€uro"), 4U);
  EXPECT_EQ(left("città", 4), "citt");
  EXPECT_EQ(left("à", 5), "à");
  EXPECT_EQ(mid("età €10", 2, 3), "à €");
  EXPECT_EQ(mid("abc", 5, 2), "");
  EXPECT_EQ(padRight("è", 3), "è  ");
  EXPECT_EQ(padRight("caffè nero", 5), "caffè");
  EXPECT_EQ(padRight("", 2), "  ");
  EXPECT_EQ(trim("  a b  "), "a b");
  EXPECT_EQ(rtrim(" a "), " a");
  EXPECT_EQ(trim("   "), "");
}

TEST(Text, EqualTextsShareAKeyAndOthersDoNot) {
  const struct {
    const char *a, *b;
  } kEqual[] = {{"abc", "ABC  "},   {"perché", "PERCHÉ"}, {"", "   "}, {"ÿ", "Ÿ"},
                {"œuvre", "ŒUVRE"}, {"ž", "Ž"},           {"ł", "Ł"}};
  for (const auto& row : kEqual) {
    EXPECT_EQ(compareText(row.a, row.b), 0) << row.a;
    EXPECT_EQ(foldText(row.a), foldText(row.b)) << row.a;
  }
  const struct {
    const char *low, *high;
  } kOrdered[] = {{"A", "b"},       {"a", "B"},   {"z", "Za"},   {"a", "ab"},      {" a", "a"},         {"", "a"},
                  {"1", "A"},       {"_", "1"},   {"e", "é"},    {"é", "f"},       {"éa", "eb"},        {"é", "ea"},
                  {"ab1e", "ab1é"}, {"eé", "ée"}, {"à ", "aa"},  {"È", "é"},       {"×", "÷"},          {"Z", "€"},
                  {"A 1", "A1"},    {"ı", "j"},   {"Z", "\xFF"}, {"\xE9", "\xEA"}, {"\xC3", "\xC3\xA9"}};
  for (const auto& row : kOrdered) {
    const bool strayByte = std::string_view(row.low) == "\xC3";
    EXPECT_NE(compareText(row.low, row.high), 0) << row.low;
    EXPECT_NE(foldText(row.low), foldText(row.high)) << row.low;
    if (!strayByte) {
      EXPECT_EQ(compareText(row.low, row.high), -1) << row.low << " " << row.high;
    }
    EXPECT_EQ(compareText(row.low, row.high), -compareText(row.high, row.low));
  }
}

/// Sorting needs an order without cycles: every pair of single characters decides like their ranks.
TEST(Text, OrderAndKeyAgreeOnEveryCharacter) {
  std::vector<std::string> all;
  for (unsigned c = 1; c < 0x180; ++c) {
    std::string text;
    if (c < 0x80)
      text += static_cast<char>(c);
    else
      text += {static_cast<char>(0xC0 | c >> 6), static_cast<char>(0x80 | (c & 0x3F))};
    all.push_back(text);
  }
  for (const auto& a : all)
    for (const auto& b : all) ASSERT_EQ(compareText(a, b) == 0, foldText(a) == foldText(b)) << a << " " << b;
}

}  // namespace
