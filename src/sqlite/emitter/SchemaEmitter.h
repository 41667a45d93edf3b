#pragma once

#include "tsql/Ast.h"
#include "tsql/Translation.h"

namespace ado::sqlite::dialect {

/// A change of the schema as SQLite's one statement.
std::string schemaStatement(const SchemaChange& change, const Catalog& catalog);

}  // namespace ado::sqlite::dialect
