#pragma once

#include "tsql/Lexer.h"
#include "tsql/Translation.h"

namespace ado::sqlite::dialect {

/// Turns one SQL Server statement into SQLite statements that give SQL Server's results.
/// A construct it does not know, and a second statement, throw values::Errore and quote the place.
/// @param stagePrefix  unique start of the names of temporary stages.
Translation translate(const Scan& scan, const Catalog& catalog, std::string_view stagePrefix);

}  // namespace ado::sqlite::dialect
