#pragma once

#include "ado/sqlite/dialect/Ast.h"
#include "ado/sqlite/dialect/Translation.h"

namespace ado::sqlite::dialect {

/// A change of the schema as SQLite's one statement.
std::string schemaStatement(const SchemaChange& change, const Catalog& catalog);

}  // namespace ado::sqlite::dialect
