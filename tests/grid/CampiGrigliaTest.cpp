#include "grid/CampiGriglia.h"
#include "support/Expected.h"
#include "support/Fields.h"

namespace {

using testing_support::described;

/// The fields of amounts and of both quantities: "#" stands for the measure's name, "@" for its type.
std::string measures(const std::string& pattern) {
  std::string text;
  for (const std::string name : {"IMP", "QTA1", "QTA2"})
    text += testing_support::filled(pattern, {{"#", name}, {"@", name == "IMP" ? "decimal(15,2)" : "decimal(14,3)"}});
  return text;
}

TEST(CampiGriglia, TheBudgetGridKeepsTheColumnsOfAForecastTogether) {
  const std::string forecasts =
      ", #_FORECAST1 @, DELTA#_FORE1 @, DELTAPERC#_FORE1 decimal(15,2)"
      ", #_FORECAST2 @, DELTA#_FORE2 @, DELTAPERC#_FORE2 decimal(15,2)";
  for (const int count : {0, 2}) {
    const auto grid = bukorval::creaGrigliaBudget("BU65_CODICE_CG31,BU65_AREA_MG08", count);
    EXPECT_EQ(grid->State(), ado::adStateOpen);
    EXPECT_EQ(grid->RecordCount(), 0);
    EXPECT_EQ(grid->CursorLocation, ado::adUseClient);
    EXPECT_EQ(grid->CursorType, ado::adOpenDynamic);
    EXPECT_EQ(described(*grid),
              "BU65_ID decimal(10,0)!, BU65_DITTA_CG18 decimal(5,0)!, BU65_TIPOCF_CG44 decimal(1,0)"
              ", BU65_CODICE_CG31 decimal(2,0), BU65_CODICE_CG31_DESCR nchar(40), BU65_AREA_MG08 nchar(3)"
              ", BU65_AREA_MG08_DESCR nchar(40), FLGESISTECRITPREL decimal(2,0)" +
                  measures(", #_BUDGET @, #_CONSUNTIVO @, DELTA#_CONS @, DELTAPERC#_CONS decimal(15,2), #_ORDINI @" +
                           (count == 2 ? forecasts : "")));
  }
}

TEST(CampiGriglia, ThePeriodGridKeepsTheForecastsOfAColumnTogether) {
  EXPECT_EQ(described(*bukorval::creaGrigliaPeriodi(2)),
            "PERIODO decimal(2,0)!, ID_BUDGET decimal(10,0), ID_CONSUNTIVO decimal(10,0), ID_ORDINI decimal(10,0)"
            ", ID_FORECAST1 decimal(10,0), ID_FORECAST2 decimal(10,0)" +
                measures(", #_BUDGET @, #_CONSUNTIVO @, DELTA#_CONS @, DELTAPERC#_CONS decimal(15,2)"
                         ", #_ORDINI decimal(15,2), #_FORECAST1 @, #_FORECAST2 @, DELTA#_FORE1 @, DELTA#_FORE2 @"
                         ", DELTAPERC#_FORE1 decimal(15,2), DELTAPERC#_FORE2 decimal(15,2)"));
  EXPECT_EQ(bukorval::creaGrigliaPeriodi(0)->Fields().Count(), 19u);
}

}  // namespace
