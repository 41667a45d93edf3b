#pragma once

namespace ado::odbc {

/// Makes databases behind an ODBC driver known under "Provider=ODBC".
void registerOdbc();

}  // namespace ado::odbc
