#pragma once

#include <memory>

#include "ado/connection/ChangeTracker.h"

namespace postgres {

class PostgresConnection;

/// Tracks changes by triggers, which are made on a table when it is tracked for the first time and do nothing in
/// sessions that track none. They keep each row before and after in a table of the session's own.
///
/// A change set is a line a row in JSON, [table, [column of the key, …], before, after], in base 64.
std::unique_ptr<ado::ChangeTracker> makeTriggerTracker(PostgresConnection& connection);

}  // namespace postgres
