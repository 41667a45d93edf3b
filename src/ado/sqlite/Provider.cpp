#include "ado/sqlite/Provider.h"

#include "ado/sqlite/SqliteConnection.h"

namespace ado::sqlite {

void registerSqlite() {
  registerProvider("SQLite", [] { return std::make_shared<SqliteConnection>(); });
}

}  // namespace ado::sqlite
