#include "support/Test.h"

#include <limits>

#include "frame/Fallimento.h"
#include "frame/TestoSql.h"

namespace {

using namespace bukorval;

TEST(TestoSql, LinesEndWithCarriageReturnAndLineFeed) {
  TestoSql sql;
  sql.riga(" SELECT ", numero(1)).riga().testo(" FROM T");
  EXPECT_EQ(sql.str(), " SELECT 1\r\n\r\n FROM T");
}

TEST(TestoSql, SplicesValues) {
  const struct {
    Variant value;
    const char *bare, *quoted, *filled;
  } rows[] = {{7, "7", "'7'", "'7   '"},
              {dec("12.50"), "12.50", "'12.50'", "'12,5'"},
              {0.1, "0.1", "'0.1'", "'0,1 '"},
              {1e300, "1E+300", "'1E+300'", "'1E+3'"},
              {Variant::Null(), "", "''", "''"},
              {Variant(), "", "''", "''"},
              {"  ", "  ", "'  '", "'    '"},
              {" 01 ", " 01 ", "' 01 '", "'01  '"},
              {"-1.5e-3", "-1.5e-3", "'-1.5e-3'", "'-1.5'"},
              {"+.5", "+.5", "'+.5'", "'+.5 '"}};
  for (const auto& row : rows) {
    EXPECT_EQ(numero(row.value), row.bare);
    EXPECT_EQ(testoDati(row.value), row.quoted);
    EXPECT_EQ(apiciRiempiti(row.value, 4), row.filled);
  }
  EXPECT_EQ(testoDati(" l'anno "), "' l''anno '");
  EXPECT_EQ(apiciRiempiti("l'anno", 4), "'l''an'");
  EXPECT_EQ(apiciRiempiti("è", 4), "'è   '");
  EXPECT_EQ(modelloPrefisso("5001"), "'5001%'");
  EXPECT_EQ(modelloPrefisso("5%_['"), "'5[%][_][[]''%'");
}

TEST(TestoSql, WhatIsNoNumberIsRefusedWhereOneIsDue) {
  for (const Variant& refused :
       {Variant("1 OR 1=1"), Variant("1--"), Variant("--1"), Variant("1,5"), Variant("1.2.3"), Variant("."),
        Variant("1e"), Variant("0x1F"), Variant("$1"), Variant("(1)"), Variant("1;"), Variant("NULL"), Variant("è"),
        Variant("'1'"), Variant(std::string("1\0", 2)), Variant(true), Variant(values::Date::FromYmd(2011, 1, 1)),
        Variant(std::numeric_limits<double>::infinity())}) {
    try {
      ADD_FAILURE() << numero(refused);
    } catch (const Fallimento& fallimento) {
      EXPECT_EQ(fallimento.stato(), bdgStatoRifiutato);
      EXPECT_EQ(fallimento.testo(), "Il valore \"" + values::toPlainText(refused) + "\" non è un numero ");
    }
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
