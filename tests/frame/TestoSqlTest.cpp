#include "support/Test.h"

#include "frame/TestoSql.h"

namespace {

using namespace bukorval;

Variant dec(std::string_view text) { return values::Decimal::TryParse(text).value(); }

TEST(TestoSql, LinesEndWithCarriageReturnAndLineFeed) {
  TestoSql sql;
  sql.riga(" SELECT ", numero(1)).riga().testo(" FROM T");
  EXPECT_EQ(sql.str(), " SELECT 1\r\n\r\n FROM T");
}

TEST(TestoSql, SplicesValues) {
  const struct {
    Variant value;
    const char *bare, *quoted, *data, *filled;
  } rows[] = {{7, "7", "'7'", "'7'", "'7   '"},         {dec("12.50"), "12.50", "'12.50'", "'12.50'", "'12,5'"},
              {0.1, "0.1", "'0.1'", "'0.1'", "'0,1 '"}, {Variant::Null(), "", "''", "''", "''"},
              {Variant(), "", "''", "''", "''"},        {" l'anno ", " l'anno ", "' l'anno '", "' l''anno '", "'l'an'"},
              {"è", "è", "'è'", "'è'", "'è   '"}};
  for (const auto& row : rows) {
    EXPECT_EQ(numero(row.value), row.bare);
    EXPECT_EQ(apici(row.value), row.quoted);
    EXPECT_EQ(testoDati(row.value), row.data);
    EXPECT_EQ(apiciRiempiti(row.value, 4), row.filled);
  }
}

TEST(TestoSql, AmountsAreExactOrRefused) {
  for (const Variant& none : {Variant::Null(), Variant(), Variant("  ")}) EXPECT_EQ(valoreDecimale(none), "NULL");
  for (const auto& [value, text] : inOut({"1234,50 => 1234.50", "1.000 => 1.000", "-0,5 => -0.5", "12.5 => 12.5"}))
    EXPECT_EQ(valoreDecimale(value), text);
  const std::pair<Variant, const char*> numbers[] = {{0, "0"},
                                                     {0.1 + 0.2, "0.3"},
                                                     {1e-7, "0.0000001"},
                                                     {1e15, "1000000000000000"},
                                                     {dec("999999999999999.99"), "999999999999999.99"}};
  for (const auto& [value, text] : numbers) EXPECT_EQ(valoreDecimale(value), text);
  for (const Variant& refused :
       {Variant("12 euro"), Variant("7.250,50"), Variant("1;DELETE"), Variant(true), Variant(1e300),
        Variant(values::Date::FromYmd(2011, 1, 1)), Variant(std::make_shared<values::Object>())})
    EXPECT_THROW(valoreDecimale(refused), values::Errore);
}

}  // namespace
