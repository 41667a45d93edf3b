#pragma once

#include <string_view>
#include <vector>

#include "ado/connection/Connection.h"
#include "schema/Files.h"

/// The tables of the suite and of the budget module, as SQL Server statements that programs carry with them.
namespace schema {

/// The statements of a text, cut at its lines "GO"; empty ones are left out.
std::vector<std::string_view> batches(std::string_view text);

/// Runs the statements of a text one by one, on the connection as it is.
void run(ado::Connection& connection, std::string_view text);

/// Makes all tables and indexes in an empty database: all of them or, when one fails, none.
/// Opens a transaction of its own.
void create(ado::Connection& connection);

}  // namespace schema
