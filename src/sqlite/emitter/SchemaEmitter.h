#pragma once

#include "tsql/Ast.h"
#include "tsql/Catalog.h"

namespace sqlite {

/// A change of the schema as SQLite's one statement.
std::string schemaStatement(const tsql::SchemaChange& change, const tsql::Catalog& catalog);

}  // namespace sqlite
