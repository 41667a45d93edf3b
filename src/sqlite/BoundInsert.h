#pragma once

#include <sqlite3.h>

#include <memory>

#include "ado/connection/BulkInsert.h"
#include "engine/BulkRow.h"

namespace sqlite {

class SqliteConnection;

/// One prepared statement, stepped with the values of each row.
std::unique_ptr<ado::BulkInsert> insertBound(const SqliteConnection& connection, sqlite3* database,
                                             engine::BulkRow columns);

}  // namespace sqlite
