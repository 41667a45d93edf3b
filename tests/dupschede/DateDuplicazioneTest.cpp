#include <gtest/gtest.h>

#include "dupschede/DateDuplicazione.h"
#include "support/ContestoDiProva.h"

namespace bukorval {
namespace {

using values::Date;

TEST(DateDuplicazione, DatesKeepTheirPlaceInTheYear) {
  struct Caso {
    Date data, origine, destinazione, attesa;
  };
  const Date gennaio2011 = Date::FromYmd(2011, 1, 1);
  const Date gennaio2012 = Date::FromYmd(2012, 1, 1);
  const Date gennaio2013 = Date::FromYmd(2013, 1, 1);
  const Date luglio2011 = Date::FromYmd(2011, 7, 1);
  const Caso casi[] = {
      {Date::FromYmd(2011, 1, 31), gennaio2011, gennaio2012, Date::FromYmd(2012, 1, 31)},
      {Date::FromYmd(2012, 2, 29), gennaio2012, gennaio2013, Date::FromYmd(2013, 2, 28)},
      {Date::FromYmd(2011, 2, 28), gennaio2011, gennaio2012, Date::FromYmd(2012, 2, 29)},
      {Date::FromYmd(2012, 2, 28), gennaio2012, gennaio2013, Date::FromYmd(2013, 2, 28)},
      {Date::FromYmd(2011, 1, 30), gennaio2011, luglio2011, Date::FromYmd(2011, 7, 30)},
      {Date::FromYmd(2011, 6, 15), gennaio2011, luglio2011, Date::FromYmd(2011, 12, 15)},
      // 30 August falls on the eighth month; from July that is February, which has no 30th.
      {Date::FromYmd(2011, 8, 30), gennaio2011, luglio2011, Date::FromYmd(2012, 3, 1)},
      {Date::FromYmd(2010, 12, 10), gennaio2011, gennaio2012, Date::FromYmd(2011, 12, 10)},
      {Date::FromYmd(2012, 3, 10), gennaio2011, gennaio2012, Date::FromYmd(2013, 3, 10)},
  };
  testing_support::ContestoDiProva prova;
  for (const auto& caso : casi) {
    const auto spostata = BdgDupSchede_AttualizzaData(prova.ctx, caso.data, caso.origine, caso.destinazione);
    EXPECT_EQ(values::toDate(spostata).toSql(), caso.attesa.toSql()) << caso.data.toSql();
  }
  EXPECT_TRUE(BdgDupSchede_AttualizzaData(prova.ctx, values::Variant::Null(), gennaio2011, gennaio2012).isEmpty());
}

}  // namespace
}  // namespace bukorval
