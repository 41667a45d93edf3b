#pragma once

#include <memory>
#include <string>

#include "schema/Schema.h"
#include "sqlite/SqliteConnection.h"
#include "suite/Suite.h"
#include "values/Conversion.h"

namespace object_tests {

/// A small company in memory: an accounting year 2024 that begins in July, budgets of types 0, 3, 4 and 5 by
/// quarter with two cards each, one value on each card, an investment budget and a structure of one
/// element.
inline std::shared_ptr<sqlite::SqliteConnection> databasePiccolo() {
  suite::registraServiziSuite();
  auto db = std::make_shared<sqlite::SqliteConnection>();
  db->ConnectionString = "Provider=SQLite;Data Source=:memory:";
  db->Open();
  schema::create(*db);
  db->Execute(
      "INSERT INTO CG18_ANADITTE (CG18_CODICE, CG18_RAGSOC, CG18_GRUPPO_CG10, CG18_MASTROCLI, CG18_MASTROFOR)"
      " VALUES (1, 'Prova', 1, '10010000', '20010000')");
  db->Execute(
      "INSERT INTO CG19_ANADITTAESER (CG19_DITTA_CG18, CG19_ANNO, CG19_PROGESER, CG19_DATAINIZIO, "
      "CG19_DATAFINE)"
      " VALUES (1, 2024, 1, '20240701', '20250630')");
  for (const int tipo : {0, 3, 4, 5}) {
    const std::string t = std::to_string(tipo);
    db->Execute(
        "INSERT INTO BU01_ANABUDGET (BU01_INDTIPO, BU01_SOTTOTIPO, BU01_STRUTTURA, BU01_FLGSEDI,"
        " BU01_FLGMASTRO, BU01_INDPERIODO, BU01_INDPERFISO, BU01_NUMFORECAST, BU01_INDTIPOPDC, "
        "BU01_CODICE_PC01)"
        " VALUES (" +
        t + ", 'A', 'ARTVAR', 0, 1, 2, 0, 2, 3, 77)");
    for (int scheda = 1; scheda <= 2; ++scheda) {
      db->Execute(
          "INSERT INTO BU65_TESBUDGET (BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_DITTA_CG18, BU65_ANNO,"
          " BU65_PROGESER, BU65_INDCOSRIC_BU07, BU65_SCHEDA_BU07, BU65_CONTO_CG24)"
          " VALUES (" +
          t + ", 'A', 1, 2024, 1, 0, 'A" + std::to_string(scheda) + "', '50010001')");
      const auto id = values::toPlainText(db->Execute("SELECT @@IDENTITY")->Fields().Item(std::size_t{0}).Value());
      db->Execute("INSERT INTO BU67_BDGCASHFLOW (BU67_ID_BU65, BU67_FLGSCADMAN) VALUES (" + id + ", 0)");
      db->Execute("INSERT INTO BU66_DETBUDGET (BU66_ID_BU65, BU66_TIPO, BU66_PERIODO, BU66_IMPORTO) VALUES (" + id +
                  ", 0, 1, 100.25)");
    }
  }
  db->Execute(
      "INSERT INTO BU04_BUDGINVEST (BU04_DITTA_CG18, BU04_INDTIPO_BU01, BU04_SOTTOTIPO_BU01) VALUES (1, 2, "
      "'A')");
  db->Execute("INSERT INTO BU60_STRUTTANAG (BU60_CODICE, BU60_INDTIPOPDC, BU60_CODICEPDC) VALUES ('S1', 1, 1)");
  db->Execute(
      "INSERT INTO BU61_STRUTTELEM (BU61_CODICE_BU60, BU61_ELEMENTO, BU61_CAMPO, BU61_VALORE) VALUES ('S1', "
      "1, 'BU65_CONTO_CG24', '50010002')");
  return db;
}

}  // namespace object_tests
