#include "odbc/Provider.h"

#include "odbc/OdbcConnection.h"

namespace ado::odbc {

void registerOdbc() {
  registerProvider("ODBC", [] { return std::make_shared<OdbcConnection>(); }, {"Driver", "DSN"});
}

}  // namespace ado::odbc
