#include "host/environment/Arguments.h"
#include "host/environment/Errors.h"
#include "support/Test.h"

namespace {

using namespace bukorval::host;
using values::Kind;

TEST(Arguments, ReadsWhatPeopleType) {
  const std::pair<Kind, testing_support::InOut> cases[] = {
      {Kind::Int32, inOut({"12 => 12", "-12 => -12", "0 => 0"})},
      {Kind::Decimal, inOut({"2147483648 => 2147483648", "12.50 => 12.50", "-0,5 => -0.5"})},
      {Kind::String, inOut({"01 => 01", "1.234.567 => 1.234.567", "1e3 => 1e3", "- => -", "'12' => 12", "' => '",
                            "null => null", " => "})},
      {Kind::Date, inOut({"#2011-01-31# => 31/01/2011", "#31/01/2011# => 31/01/2011"})},
      {Kind::Null, inOut({"NULL => "})},
      {Kind::Empty, inOut({"EMPTY => "})}};
  for (const auto& [kind, rows] : cases) {
    for (const auto& [text, plain] : rows) {
      EXPECT_EQ(parseArgument(text).kind(), kind) << text;
      EXPECT_EQ(values::toPlainText(parseArgument(text)), plain) << text;
    }
  }
  EXPECT_THROW(parseArgument("#30/02/2011#"), UsageError);
}

TEST(Arguments, ReadsDictionaries) {
  const auto sites = parseDictionary("1, 2,'03'");
  ASSERT_EQ(sites->Count(), 3u);
  EXPECT_TRUE(sites->Exists(1));
  EXPECT_EQ(sites->Keys()[2], values::Variant("03"));

  const auto card = parseDictionary("BU65_SCHEDA_BU07='0100',BU65_CODICE_CG31=3");
  EXPECT_EQ(card->Item("BU65_SCHEDA_BU07"), values::Variant("0100"));
  EXPECT_EQ(card->Item("BU65_CODICE_CG31"), values::Variant(3));

  EXPECT_EQ(parseDictionary("")->Count(), 0u);
  EXPECT_THROW(parseDictionary("1,1"), UsageError);
}

}  // namespace
