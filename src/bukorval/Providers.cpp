#include "bukorval/Providers.h"

#include "odbc/Provider.h"
#include "sqlite/Provider.h"
#include "suite/Suite.h"
#ifdef BUKORVAL_POSTGRES
#include "postgres/Provider.h"
#endif

namespace bukorval {

void registerAll() {
  sqlite::registerSqlite();
  odbc::registerOdbc();
#ifdef BUKORVAL_POSTGRES
  postgres::registerPostgres();
#endif
  suite::registraServiziSuite();
}

const char* version() { return BUKORVAL_VERSION; }

}  // namespace bukorval
