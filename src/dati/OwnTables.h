#pragma once

#include <string_view>

#include "ado/connection/Connection.h"

/// Tables that the program keeps for itself; a database made before they were invented lacks them.
namespace bukorval::dati {

/// Engines list their tables each in its own way; all of them refuse to read one that is missing. Not for use inside a
/// transaction: some engines end it with the refusal.
bool hasTable(ado::Connection& connection, std::string_view table);
/// Makes the tables of a schema file, in a transaction of their own, unless this one of them is there.
void prepareTables(ado::Connection& connection, std::string_view file, std::string_view table);

}  // namespace bukorval::dati
