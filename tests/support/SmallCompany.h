#pragma once

#include "support/Database.h"

namespace testing_support {

/// A company in memory with an accounting year 2025 from January and one 2024 from July, a chart of three accounts and
/// two charts that these are carried to.
inline ado::ConnectionPtr smallCompany() {
  auto db = memoryDatabase();
  for (const char* sql :
       {"INSERT INTO CG18_ANADITTE (CG18_CODICE, CG18_RAGSOC, CG18_GRUPPO_CG10, CG18_MASTROCLI, CG18_MASTROFOR)"
        " VALUES (1, 'Prova', 1, '10010000', '20010000')",
        "INSERT INTO CG19_ANADITTAESER (CG19_DITTA_CG18, CG19_ANNO, CG19_PROGESER, CG19_DATAINIZIO, CG19_DATAFINE)"
        " VALUES (1, 2025, 1, '20250101', '20251231'), (1, 2024, 1, '20240701', '20250630')",
        "INSERT INTO CG24_TABPDC (CG24_GRUPPO_CG10, CG24_CONTO, CG24_DESCR, CG24_INDTIPOCONTO) VALUES"
        " (1, '50010001', 'Merci', 2), (1, '50010002', 'Servizi', 2), (1, '70010001', 'Vendite', 2)",
        "INSERT INTO CG23_RICLBILCEE (CG23_CODICE_CG21, CG23_CODICE, CG23_DESCR) VALUES"
        " (9, 'A01', 'Ricavi'), (9, 'B06', 'Costi')",
        "INSERT INTO CG20_COLLPDCRICL (CG20_GRUPPO_CG10, CG20_CONTO_CG24, CG20_CODICE_CG21, CG20_INDSEGNO,"
        " CG20_CODICE_CG23) VALUES (1, '50010001', 9, 1, 'B06'), (1, '50010001', 9, 2, 'A01'),"
        " (1, '70010001', 9, 2, 'A01')",
        "INSERT INTO PC03_ANAGPDC (PC03_CODICE_PC01, PC03_CONTO, PC03_DESCR) VALUES (8, 'MARGINE', 'Margine')",
        "INSERT INTO CG83_COLLRICL (CG83_CODICE_CG10, CG83_CONTO_CG24, CG83_CODICERICL_PC01, CG83_INDSEGNO,"
        " CG83_CONTORICL_PC03) VALUES (1, '50010001', 8, 1, 'MARGINE'), (1, '70010001', 8, 2, 'MARGINE')"})
    db->Execute(sql);
  return db;
}

}  // namespace testing_support
