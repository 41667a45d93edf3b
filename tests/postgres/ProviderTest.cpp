#include "ado/ProviderCases.h"
#include "postgres/Databases.h"
#include "postgres/Provider.h"

namespace provider_cases {

/// A database that goes with the test program.
const Provider kPostgres{"PostgreSQL", [] {
                           static std::vector<std::unique_ptr<postgres_tests::TemporaryDatabase>> databases;
                           databases.push_back(std::make_unique<postgres_tests::TemporaryDatabase>());
                           postgres::registerPostgres();
                           auto connection = ado::createConnection();
                           connection->ConnectionString = postgres_tests::connectionString(databases.back()->name());
                           connection->Open();
                           return connection;
                         }};

INSTANTIATE_TEST_SUITE_P(Postgres, ProviderCases, testing::Values(kPostgres));
INSTANTIATE_TEST_SUITE_P(Postgres, PortableCases, testing::Values(kPostgres));

}  // namespace provider_cases
