#include "sqlite/Provider.h"

#include "sqlite/SqliteConnection.h"

namespace ado::sqlite {

void registerSqlite() {
  registerProvider("SQLite", [] { return std::make_shared<SqliteConnection>(); });
}

}  // namespace ado::sqlite
