#include "sqlite/Provider.h"

#include "sqlite/SqliteConnection.h"

namespace sqlite {

void registerSqlite() {
  ado::registerProvider("SQLite", [] { return std::make_shared<SqliteConnection>(); });
}

}  // namespace sqlite
