#pragma once

#include <sqlite3.h>

#include <string>

#include "sqlite/Handle.h"

namespace bench {

/// 60 details for each of the cards 1 to `cards`: 12 periods of budget, actuals (the last three without), orders and
/// two forecasts.
inline void fillDetails(sqlite3* database, long cards) {
  sqlite::run(
      database,
      ("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 < " + std::to_string(cards) +
       " * 60) INSERT INTO BU66_DETBUDGET (BU66_ID_BU65, BU66_TIPO, BU66_PERIODO, BU66_IMPORTO, BU66_QTA1, BU66_QTA2)"
       " SELECT i / 60 + 1, i % 60 / 12, i % 12 + 1,"
       " CASE WHEN i % 60 / 12 = 1 AND i % 12 > 8 THEN NULL ELSE (i * 7919) % 1000000 END,"
       " (i * 31) % 100000, NULL FROM n")
          .c_str());
}

}  // namespace bench
