#pragma once

#include <sqlite3.h>

#include <string>

#include "sqlite/Handle.h"

namespace bench {

inline constexpr int kLinesPerRegistration = 10;

/// Cost cards, each on an account of its own, and a year of movements spread evenly over them; one line in two has a
/// competence interval of up to three months.
inline void fillLedger(sqlite3* database, int lines, int linesPerCard) {
  const std::string n = std::to_string(lines), c = std::to_string(lines / linesPerCard),
                    r = std::to_string(lines / kLinesPerRegistration);
  const auto series = [](const std::string& last) {
    return "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " + last + ") ";
  };
  sqlite::run(database, "BEGIN");
  sqlite::run(
      database,
      (series(r) +
       "INSERT INTO CG41_PRIMANOTA (CG41_DITTA_CG18, CG41_NUMREG, CG41_DATAREG, CG41_ANNO_CG19,"
       " CG41_PROGESER_CG19, CG41_INDPROVREG) SELECT 1, i, 20110000000000 + (i % 12 + 1) * 100000000 + (i % 28 + 1) *"
       " 1000000, 2011, 1, 0 FROM n")
          .c_str());
  sqlite::run(database,
              (series(n) +
               "INSERT INTO CG42_MOVCONT (CG42_DITTA_CG18, CG42_NUMREG_CG41, CG42_NUMRIGACONT, CG42_GRUPPO_CG10,"
               " CG42_CONTOPAR_CG24, CG42_INDDAAV, CG42_IMPTOTALE, CG42_CODICE_CG33, CG42_DATAINICOMP,"
               " CG42_DATAFINCOMP) SELECT 1, (i - 1) / 10 + 1, (i - 1) % 10 + 1, 1, printf('6%07d', i * 7919 % " +
               c +
               " + 1), 1 + (i % 9 = 0), i * 7919 % 1000000, '    ',"
               " CASE WHEN i % 2 THEN 20110000000000 + (i % 9 + 1) * 100000000 + 5000000 END,"
               " CASE WHEN i % 2 THEN 20110000000000 + (i % 9 + 3) * 100000000 + 17000000 END FROM n")
                  .c_str());
  sqlite::run(database,
              (series(c) + "INSERT INTO BU65_TESBUDGET (BU65_DITTA_CG18, BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01,"
                           " BU65_ANNO, BU65_PROGESER, BU65_INDCOSRIC_BU07, BU65_SCHEDA_BU07, BU65_GRUPPO_CG10,"
                           " BU65_CONTO_CG24) SELECT 1, 4, '01', 2011, 1, 0, printf('C%06d', i), 1, printf('6%07d', i)"
                           " FROM n")
                  .c_str());
  sqlite::run(database, "INSERT INTO BU67_BDGCASHFLOW (BU67_ID_BU65) SELECT BU65_ID FROM BU65_TESBUDGET");
  sqlite::run(database, "COMMIT");
}

}  // namespace bench
