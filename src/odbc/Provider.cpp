#include "odbc/Provider.h"

#include "odbc/OdbcConnection.h"

namespace odbc {

void registerOdbc() {
  ado::registerProvider("ODBC", [] { return std::make_shared<OdbcConnection>(); }, {"Driver", "DSN"});
}

}  // namespace odbc
