#pragma once

#include <memory>

#include "ado/connection/BulkInsert.h"
#include "engine/BulkRow.h"

namespace postgres {

class PostgresConnection;

/// Gathers rows and sends them by COPY, some thousand at a time: between two such runs the connection is free.
std::unique_ptr<ado::BulkInsert> insertByCopy(PostgresConnection& connection, engine::BulkRow columns);

}  // namespace postgres
