#include <gtest/gtest.h>

#include "frame/TestoSql.h"
#include "values/Errore.h"

namespace bukorval {
namespace {

using values::Variant;

Variant dec(std::string_view testo) { return values::Decimal::TryParse(testo).value(); }

TEST(TestoSql, LinesEndWithCarriageReturnAndLineFeed) {
  TestoSql sql;
  sql.riga(" SELECT ", numero(1)).riga().testo(" FROM T");
  EXPECT_EQ(sql.str(), " SELECT 1\r\n\r\n FROM T");
}

TEST(TestoSql, SplicesValues) {
  const struct {
    Variant valore;
    const char *numero, *apici, *dati, *riempito;
  } kRighe[] = {
      {7, "7", "'7'", "'7'", "'7   '"},         {dec("12.50"), "12.50", "'12.50'", "'12.50'", "'12,5'"},
      {0.1, "0.1", "'0.1'", "'0.1'", "'0,1 '"}, {Variant::Null(), "", "''", "''", "''"},
      {Variant(), "", "''", "''", "''"},        {" l'anno ", " l'anno ", "' l'anno '", "' l''anno '", "'l'an'"},
      {"è", "è", "'è'", "'è'", "'è   '"}};
  for (const auto& riga : kRighe) {
    EXPECT_EQ(numero(riga.valore), riga.numero);
    EXPECT_EQ(apici(riga.valore), riga.apici);
    EXPECT_EQ(testoDati(riga.valore), riga.dati);
    EXPECT_EQ(apiciRiempiti(riga.valore, 4), riga.riempito);
  }
}

TEST(TestoSql, AmountsAreExactOrRefused) {
  const struct {
    Variant valore;
    const char* testo;
  } kRighe[] = {{Variant::Null(), "NULL"},
                {Variant(), "NULL"},
                {"  ", "NULL"},
                {0, "0"},
                {"1234,50", "1234.50"},
                {"1.000", "1.000"},
                {"-0,5", "-0.5"},
                {"12.5", "12.5"},
                {0.1 + 0.2, "0.3"},
                {1e15, "1000000000000000"},
                {1e-7, "0.0000001"},
                {dec("999999999999999.99"), "999999999999999.99"}};
  for (const auto& riga : kRighe) EXPECT_EQ(valoreDecimale(riga.valore), riga.testo);
  for (const Variant& rifiutato :
       {Variant("12 euro"), Variant("7.250,50"), Variant("1;DELETE"), Variant(true), Variant(1e300),
        Variant(values::Date::FromYmd(2011, 1, 1)), Variant(std::make_shared<values::Object>())})
    EXPECT_THROW(valoreDecimale(rifiutato), values::Errore);
}

}  // namespace
}  // namespace bukorval
