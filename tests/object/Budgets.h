#pragma once

#include "support/SmallCompany.h"

namespace object_tests {

/// The small company with quarterly budgets of types 0, 3, 4 and 5, subtype A, of two cards each in the year that
/// begins in July 2024, one value on each card; an investment budget and a structure of one element.
inline ado::ConnectionPtr companyWithBudgets() {
  using testing_support::insert;
  auto db = testing_support::smallCompany();
  for (const std::string type : {"0", "3", "4", "5"}) {
    insert(*db, "BU01_ANABUDGET",
           "BU01_INDTIPO=" + type +
               ", BU01_SOTTOTIPO='A', BU01_STRUTTURA='ARTVAR', BU01_FLGSEDI=0, BU01_FLGMASTRO=1, BU01_INDPERIODO=2,"
               " BU01_INDPERFISO=0, BU01_NUMFORECAST=2, BU01_INDTIPOPDC=3, BU01_CODICE_PC01=77");
    for (const char* card : {"'A1'", "'A2'"}) {
      const auto id = insert(*db, "BU65_TESBUDGET",
                             "BU65_INDTIPO_BU01=" + type +
                                 ", BU65_SOTTOTIPO_BU01='A', BU65_DITTA_CG18=1, BU65_ANNO=2024, BU65_PROGESER=1,"
                                 " BU65_INDCOSRIC_BU07=0, BU65_CONTO_CG24='50010001', BU65_SCHEDA_BU07=" +
                                 card);
      insert(*db, "BU67_BDGCASHFLOW", "BU67_ID_BU65=" + id + ", BU67_FLGSCADMAN=0");
      insert(*db, "BU66_DETBUDGET", "BU66_ID_BU65=" + id + ", BU66_TIPO=0, BU66_PERIODO=1, BU66_IMPORTO=100.25");
    }
  }
  insert(*db, "BU04_BUDGINVEST", "BU04_DITTA_CG18=1, BU04_INDTIPO_BU01=2, BU04_SOTTOTIPO_BU01='A'");
  insert(*db, "BU60_STRUTTANAG", "BU60_CODICE='S1', BU60_INDTIPOPDC=1, BU60_CODICEPDC=1");
  insert(*db, "BU61_STRUTTELEM",
         "BU61_CODICE_BU60='S1', BU61_ELEMENTO=1, BU61_CAMPO='BU65_CONTO_CG24', BU61_VALORE='50010002'");
  return db;
}

}  // namespace object_tests
