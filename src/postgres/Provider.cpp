#include "postgres/Provider.h"

#include "postgres/PostgresConnection.h"

namespace postgres {

void registerPostgres() {
  ado::registerProvider("PostgreSQL", [] { return std::make_shared<PostgresConnection>(); });
}

}  // namespace postgres
