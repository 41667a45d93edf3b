#pragma once

#include <sqlite3.h>

namespace ado::sqlite {

/// Gives a connection the functions, sums and the text order that translated statements call.
void registerFunctions(sqlite3* database);

}  // namespace ado::sqlite
