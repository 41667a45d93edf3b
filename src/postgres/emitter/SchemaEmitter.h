#pragma once

#include <string>

#include "tsql/Statement.h"

namespace postgres {

/// A change of the schema as PostgreSQL's statements, which belong into one transaction.
std::string schemaStatements(const tsql::SchemaChange& change, const tsql::Catalog& catalog);

}  // namespace postgres
