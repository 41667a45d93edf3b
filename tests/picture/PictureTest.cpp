#include "picture/Markup.h"
#include "picture/Ticks.h"
#include "support/Test.h"

namespace {

using namespace bukorval::picture;

/// "begin end: label label …", with the decimal sign of Italy.
std::string shown(double least, double greatest, int room) {
  const Axis axis(least, greatest, room);
  Words words;
  words.separator = ',';
  std::string text;
  for (const double tick : axis.ticks()) text += (text.empty() ? "" : " ") + axis.label(tick, words);
  return text;
}

TEST(Axis, HasRoundNumbersAroundTheDataAndNoMoreThanThereIsRoomFor) {
  const struct {
    double least, greatest;
    int room;
    const char* labels;
  } kRows[] = {{0, 100, 5, "0 20 40 60 80 100"},
               {0, 101, 5, "0 25 50 75 100 125"},
               {0, 10, 4, "0,0 2,5 5,0 7,5 10,0"},
               {-30, 70, 5, "-40 -20 0 20 40 60 80"},
               {0, 1, 5, "0,00 0,20 0,40 0,60 0,80 1,00"},
               {0, 0, 4, "0,00 0,25 0,50 0,75 1,00"},
               {5, 5, 2, "5,00 5,50 6,00"},
               {0, 0.03, 3, "0,000 0,010 0,020 0,030"},
               {0, 900, 3, "0 500 1.000"},
               {0, 4, 4, "0 1 2 3 4"},
               {-0.25, 0, 1, "-0,25 0,00"}};
  for (const auto& row : kRows) {
    EXPECT_EQ(shown(row.least, row.greatest, row.room), row.labels) << row.least << " to " << row.greatest;
    const Axis axis(row.least, row.greatest, row.room);
    EXPECT_LE(axis.begin(), row.least);
    EXPECT_GE(axis.end(), row.greatest);
    EXPECT_LE(axis.ticks().size(), static_cast<std::size_t>(row.room) + 3);
    EXPECT_DOUBLE_EQ(axis.position(axis.begin()), 0);
    EXPECT_DOUBLE_EQ(axis.position(axis.end()), 1);
  }
}

TEST(Axis, HoldsZeroAndEveryPoint) {
  Trend trend;
  const auto point = [](const char* text) { return *Decimal::TryParse(text); };
  trend.series.resize(2);
  trend.series[0].points = {point("40"), std::nullopt, point("-7.5")};
  trend.series[1].points = {point("12"), point("93")};
  const auto axis = axisOf(trend, 5);
  EXPECT_LE(axis.begin(), -7.5);
  EXPECT_GE(axis.end(), 93);
  EXPECT_LT(axis.end(), 140);
  trend.series[0].points = {point("40")};
  trend.series[1].points = {point("50")};
  EXPECT_EQ(axisOf(trend, 5).begin(), 0);
  trend.series[0].points = {point("-40")};
  trend.series[1].points = {};
  EXPECT_EQ(axisOf(trend, 5).end(), 0);
}

TEST(Markup, ShowsTextsAndObeysNone) {
  for (const auto& [text, shown] : inOut({"a<b>&\"c\" => a&lt;b&gt;&amp;&quot;c&quot;",
                                          "<script>alert(1)</script> => "
                                          "&lt;script&gt;alert(1)&lt;/script&gt;",
                                          "città €5 => città €5", "plain => plain"}))
    EXPECT_EQ(escaped(text), shown);
  EXPECT_EQ(escaped("a\tb\nc"), "a\tb\nc");
  for (const char* forbidden : {"\x01", "\x0B", "\x1F", "\x7F", "\xFF", "\u202E", "\u0085", "\uFFFF"})
    EXPECT_EQ(escaped(std::string("a") + forbidden + "b"), "a\uFFFDb") << static_cast<int>(forbidden[0]);
  Markup page;
  page.open("g", {{"id", "a\"b"}}).element("text", {{"x", coordinate(1.005)}}, "<&").empty("rect").close("g");
  EXPECT_THAT(page.str(), testing::HasSubstr("id=\"a&quot;b\""));
  EXPECT_THAT(page.str(), testing::HasSubstr(">&lt;&amp;</text>"));
  EXPECT_THAT(page.str(), testing::EndsWith("</g>\n"));
}

TEST(Markup, WritesCoordinatesShort) {
  const std::pair<double, const char*> rows[] = {{0, "0"},        {-0.001, "0"},    {1, "1"},     {1.5, "1.5"},
                                                 {1.234, "1.23"}, {-12.5, "-12.5"}, {100, "100"}, {0.996, "1"}};
  for (const auto& [value, text] : rows) EXPECT_EQ(coordinate(value), text) << value;
}

}  // namespace
