#pragma once

#include <memory>

#include "ado/connection/ChangeTracker.h"
#include "sqlite/SchemaCatalog.h"

struct sqlite3;

namespace sqlite {

/// Tracks changes by the engine's sessions. Change sets are the engine's own, in hexadecimal digits.
std::unique_ptr<ado::ChangeTracker> makeSessionTracker(sqlite3* database, const SchemaCatalog& catalog);

}  // namespace sqlite
