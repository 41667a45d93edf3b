#include <iomanip>
#include <sstream>

#include "engine/LiteralConversion.h"
#include "sqlite/functions/SqlLikePattern.h"
#include "support/Test.h"

namespace {

using engine::Binding, tsql::Literal, tsql::Type, tsql::TypeKind;
using Kind = Literal::Kind;

std::string shownValue(const engine::BoundValue& value) {
  std::ostringstream out;
  std::visit([&](const auto& v) { out << std::setprecision(17) << v; }, value);
  return out.str();
}

struct Case {
  Kind kind;
  const char* text;
  Type target;
  bool assignment;
  const char* expected;  ///< the bound value, or the error
};

constexpr Type decimal(std::int16_t precision, std::int16_t scale) {
  return {.kind = TypeKind::Decimal, .precision = precision, .scale = scale};
}
constexpr Type integer(std::int16_t bits) { return {.kind = TypeKind::Integer, .precision = bits}; }
constexpr Type text(std::int32_t length, bool fixed) {
  return {.kind = TypeKind::Text, .length = length, .fixed = fixed};
}
constexpr Type kDate{.kind = TypeKind::DateTime};
constexpr Type kBit{.kind = TypeKind::Bit};
constexpr bool kWrite = true;
constexpr bool kCompare = false;

TEST(LiteralConversion, GivesTheStoredFormOrSqlServersError) {
  const std::vector<Case> cases = {
      {Kind::Decimal, "1.005", decimal(15, 2), kWrite, "101"},
      {Kind::Decimal, "1.005", decimal(15, 2), kCompare, "100.5"},
      {Kind::Decimal, "1.0010", decimal(15, 3), kCompare, "1001"},
      {Kind::Integer, "7", decimal(15, 2), kWrite, "700"},
      {Kind::Float, "1.5E2", decimal(15, 2), kWrite, "15000"},
      {Kind::Text, " -2.50 ", decimal(15, 2), kWrite, "-250"},
      {Kind::Decimal, "9999999999999.994", decimal(15, 2), kWrite, "999999999999999"},
      {Kind::Decimal, "9999999999999.995", decimal(15, 2), kWrite,
       "Arithmetic overflow error converting numeric to data type numeric in column 'C'"},
      {Kind::Integer, "99999999999999999999", decimal(15, 2), kCompare, "1e+30"},
      {Kind::Text, "1,5", decimal(15, 2), kCompare, "Error converting data type varchar to numeric"},
      {Kind::Integer, "40000", integer(16), kCompare, "40000"},
      {Kind::Integer, "32768", integer(16), kWrite,
       "Arithmetic overflow error converting int to data type smallint in column 'C'"},
      {Kind::Decimal, "1.9", integer(32), kWrite, "1"},
      {Kind::Decimal, "1.9", integer(32), kCompare, "1.5"},
      {Kind::Text, "", integer(32), kCompare, "0"},
      {Kind::Text, "x1", integer(32), kCompare,
       "Conversion failed when converting the varchar value 'x1' to data type int"},
      {Kind::Text, "ab", text(4, true), kWrite, "ab  "},
      {Kind::Text, "ab  ", text(2, false), kWrite, "ab"},
      {Kind::Text, "però!", text(4, false), kWrite,
       "String or binary data would be truncated in column 'C'. Truncated value: 'però'"},
      {Kind::Text, "lungo", text(2, true), kCompare, "lungo"},
      {Kind::Integer, "12", text(4, true), kWrite, "12  "},
      {Kind::Text, "20110131", kDate, kCompare, "20110131000000"},
      {Kind::Text, "20110131 13:05:09", kDate, kWrite, "20110131130509"},
      {Kind::Text, "2011-01-31T13:05:09.997", kDate, kWrite, "20110131130509"},
      {Kind::Text, "", kDate, kWrite, "19000101000000"},
      {Kind::Integer, "1", kDate, kWrite, "19000102000000"},
      {Kind::Text, "20110229", kDate, kWrite,
       "The conversion to a date and time resulted in an out-of-range value: '20110229' in column 'C'"},
      {Kind::Text, "31/01/2011", kDate, kCompare,
       "Conversion failed when converting date and/or time from character string: '31/01/2011' in column 'C'"},
      {Kind::Text, "TRUE", kBit, kWrite, "1"},
      {Kind::Integer, "5", kBit, kWrite, "1"},
  };
  for (const auto& c : cases) {
    const Binding binding{Binding::How::ToType, 0, c.target, c.assignment, "C"};
    const Literal literal{c.kind, c.text};
    std::string value;
    const auto error = errorOf([&] { value = shownValue(engine::convertedValue(literal, binding)); });
    EXPECT_EQ(error.empty() ? value : error, c.expected) << c.text;
  }
}

TEST(LikePattern, MatchesAsSqlServerDoes) {
  const auto matches = [](const auto& row) { return sqlite::SqlLikePattern(row.second).matches(row.first); };
  for (const auto& row :
       inOut({"Budget => bud%", "Budget => %GET", "Budget => b_dget", "bud    => bud", " => %", "a => %a%",
              "aaab => %a_b", "mississippi => m%iss%ip%i", "50% => 50[%]", "c7 => [a-d][0-9]", "e7 => [^a-d]_",
              "CITTÀ => citt_", "CITTÀ => %à", "[x => [x", "a] => a]", "60010 00000   => 60010%"}))
    EXPECT_TRUE(matches(row)) << row.first << " LIKE " << row.second;
  for (const auto& row : inOut(
           {"Budget => bud", "bud => bud ", " => _", "mississippi => m%iss%ip%s", "50x => 50[%]", "e7 => [a-d][0-9]"}))
    EXPECT_FALSE(matches(row)) << row.first << " LIKE " << row.second;
}

}  // namespace
