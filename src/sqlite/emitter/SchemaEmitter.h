#pragma once

#include "tsql/Statement.h"

namespace sqlite {

/// A change of the schema as SQLite's one statement.
std::string schemaStatement(const tsql::SchemaChange& change, std::string_view textOrder);

}  // namespace sqlite
