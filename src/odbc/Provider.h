#pragma once

namespace odbc {

/// Makes databases behind an ODBC driver known under "Provider=ODBC".
void registerOdbc();

}  // namespace odbc
