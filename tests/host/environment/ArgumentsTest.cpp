#include "host/environment/Arguments.h"
#include "host/environment/Errors.h"
#include "support/Test.h"

namespace {

using namespace bukorval::host;
using values::Kind;

TEST(Arguments, ReadsWhatPeopleType) {
  const std::tuple<const char*, Kind, const char*> cases[] = {
      {"12", Kind::Int32, "12"},
      {"-12", Kind::Int32, "-12"},
      {"0", Kind::Int32, "0"},
      {"01", Kind::String, "01"},
      {"2147483648", Kind::Decimal, "2147483648"},
      {"12.50", Kind::Decimal, "12.50"},
      {"-0,5", Kind::Decimal, "-0.5"},
      {"1.234.567", Kind::String, "1.234.567"},
      {"1e3", Kind::String, "1e3"},
      {"-", Kind::String, "-"},
      {"#2011-01-31#", Kind::Date, "31/01/2011"},
      {"#31/01/2011#", Kind::Date, "31/01/2011"},
      {"'12'", Kind::String, "12"},
      {"'", Kind::String, "'"},
      {"NULL", Kind::Null, ""},
      {"EMPTY", Kind::Empty, ""},
      {"null", Kind::String, "null"},
      {"", Kind::String, ""},
  };
  for (const auto& [text, kind, plain] : cases) {
    const auto value = parseArgument(text);
    EXPECT_EQ(value.kind(), kind) << text;
    EXPECT_EQ(values::toPlainText(value), plain) << text;
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
