#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "grid/CampiGriglia.h"

namespace {

using testing::ElementsAreArray;

/// "NAME type(precision,scale)" or "NAME text(length)", with "!" where Null is refused.
std::vector<std::string> campi(const ado::Recordset& insieme) {
  std::vector<std::string> risultato;
  for (std::size_t i = 0; i < insieme.Fields().Count(); ++i) {
    const auto& campo = insieme.Fields().Item(i);
    std::string testo = campo.Name();
    if (campo.Type() == ado::adDecimal)
      testo += " " + std::to_string(campo.Precision()) + "," + std::to_string(campo.NumericScale());
    else if (campo.Type() == ado::adWChar)
      testo += " text " + std::to_string(campo.DefinedSize());
    else
      testo += " type " + std::to_string(campo.Type());
    if (campo.Attributes() != ado::adFldIsNullable) testo += "!";
    risultato.push_back(testo);
  }
  return risultato;
}

TEST(CampiGriglia, BudgetWithoutForecasts) {
  const auto griglia = bukorval::creaGrigliaBudget("BU65_CODICE_CG31,BU65_AREA_MG08", 0);
  EXPECT_EQ(griglia->State(), ado::adStateOpen);
  EXPECT_EQ(griglia->RecordCount(), 0);
  EXPECT_EQ(griglia->CursorLocation, ado::adUseClient);
  EXPECT_EQ(griglia->CursorType, ado::adOpenDynamic);
  EXPECT_THAT(campi(*griglia), ElementsAreArray({"BU65_ID 10,0!",
                                                 "BU65_DITTA_CG18 5,0!",
                                                 "BU65_TIPOCF_CG44 1,0",
                                                 "BU65_CODICE_CG31 2,0",
                                                 "BU65_CODICE_CG31_DESCR text 40",
                                                 "BU65_AREA_MG08 text 3",
                                                 "BU65_AREA_MG08_DESCR text 40",
                                                 "FLGESISTECRITPREL 2,0",
                                                 "IMP_BUDGET 15,2",
                                                 "IMP_CONSUNTIVO 15,2",
                                                 "DELTAIMP_CONS 15,2",
                                                 "DELTAPERCIMP_CONS 15,2",
                                                 "IMP_ORDINI 15,2",
                                                 "QTA1_BUDGET 14,3",
                                                 "QTA1_CONSUNTIVO 14,3",
                                                 "DELTAQTA1_CONS 14,3",
                                                 "DELTAPERCQTA1_CONS 15,2",
                                                 "QTA1_ORDINI 14,3",
                                                 "QTA2_BUDGET 14,3",
                                                 "QTA2_CONSUNTIVO 14,3",
                                                 "DELTAQTA2_CONS 14,3",
                                                 "DELTAPERCQTA2_CONS 15,2",
                                                 "QTA2_ORDINI 14,3"}));
}

TEST(CampiGriglia, BudgetKeepsTheColumnsOfAForecastTogether) {
  const auto tutti = campi(*bukorval::creaGrigliaBudget("", 2));
  EXPECT_THAT(
      std::vector(tutti.begin() + 4, tutti.end()),
      ElementsAreArray(
          {"IMP_BUDGET 15,2",         "IMP_CONSUNTIVO 15,2",      "DELTAIMP_CONS 15,2",       "DELTAPERCIMP_CONS 15,2",
           "IMP_ORDINI 15,2",         "IMP_FORECAST1 15,2",       "DELTAIMP_FORE1 15,2",      "DELTAPERCIMP_FORE1 15,2",
           "IMP_FORECAST2 15,2",      "DELTAIMP_FORE2 15,2",      "DELTAPERCIMP_FORE2 15,2",  "QTA1_BUDGET 14,3",
           "QTA1_CONSUNTIVO 14,3",    "DELTAQTA1_CONS 14,3",      "DELTAPERCQTA1_CONS 15,2",  "QTA1_ORDINI 14,3",
           "QTA1_FORECAST1 14,3",     "DELTAQTA1_FORE1 14,3",     "DELTAPERCQTA1_FORE1 15,2", "QTA1_FORECAST2 14,3",
           "DELTAQTA1_FORE2 14,3",    "DELTAPERCQTA1_FORE2 15,2", "QTA2_BUDGET 14,3",         "QTA2_CONSUNTIVO 14,3",
           "DELTAQTA2_CONS 14,3",     "DELTAPERCQTA2_CONS 15,2",  "QTA2_ORDINI 14,3",         "QTA2_FORECAST1 14,3",
           "DELTAQTA2_FORE1 14,3",    "DELTAPERCQTA2_FORE1 15,2", "QTA2_FORECAST2 14,3",      "DELTAQTA2_FORE2 14,3",
           "DELTAPERCQTA2_FORE2 15,2"}));
}

TEST(CampiGriglia, PeriodsKeepTheForecastsOfAColumnTogether) {
  EXPECT_THAT(campi(*bukorval::creaGrigliaPeriodi(2)), ElementsAreArray({"PERIODO 2,0!",
                                                                         "ID_BUDGET 10,0",
                                                                         "ID_CONSUNTIVO 10,0",
                                                                         "ID_ORDINI 10,0",
                                                                         "ID_FORECAST1 10,0",
                                                                         "ID_FORECAST2 10,0",
                                                                         "IMP_BUDGET 15,2",
                                                                         "IMP_CONSUNTIVO 15,2",
                                                                         "DELTAIMP_CONS 15,2",
                                                                         "DELTAPERCIMP_CONS 15,2",
                                                                         "IMP_ORDINI 15,2",
                                                                         "IMP_FORECAST1 15,2",
                                                                         "IMP_FORECAST2 15,2",
                                                                         "DELTAIMP_FORE1 15,2",
                                                                         "DELTAIMP_FORE2 15,2",
                                                                         "DELTAPERCIMP_FORE1 15,2",
                                                                         "DELTAPERCIMP_FORE2 15,2",
                                                                         "QTA1_BUDGET 14,3",
                                                                         "QTA1_CONSUNTIVO 14,3",
                                                                         "DELTAQTA1_CONS 14,3",
                                                                         "DELTAPERCQTA1_CONS 15,2",
                                                                         "QTA1_ORDINI 15,2",
                                                                         "QTA1_FORECAST1 14,3",
                                                                         "QTA1_FORECAST2 14,3",
                                                                         "DELTAQTA1_FORE1 14,3",
                                                                         "DELTAQTA1_FORE2 14,3",
                                                                         "DELTAPERCQTA1_FORE1 15,2",
                                                                         "DELTAPERCQTA1_FORE2 15,2",
                                                                         "QTA2_BUDGET 14,3",
                                                                         "QTA2_CONSUNTIVO 14,3",
                                                                         "DELTAQTA2_CONS 14,3",
                                                                         "DELTAPERCQTA2_CONS 15,2",
                                                                         "QTA2_ORDINI 15,2",
                                                                         "QTA2_FORECAST1 14,3",
                                                                         "QTA2_FORECAST2 14,3",
                                                                         "DELTAQTA2_FORE1 14,3",
                                                                         "DELTAQTA2_FORE2 14,3",
                                                                         "DELTAPERCQTA2_FORE1 15,2",
                                                                         "DELTAPERCQTA2_FORE2 15,2"}));
  EXPECT_EQ(bukorval::creaGrigliaPeriodi(0)->Fields().Count(), 19u);
}

}  // namespace
