#pragma once

#include "ado/recordset/Recordset.h"
#include "odbc/Handle.h"

namespace odbc {

/// Reads the rows of an executed statement into a record set that stands on its first row. Decimals are
/// exact; a date keeps its whole seconds. Throws values::Errore for a value that its column cannot mean.
ado::RecordsetPtr readRows(const Handle& statement, SQLSMALLINT columns);

}  // namespace odbc
