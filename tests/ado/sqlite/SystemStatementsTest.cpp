#include "ado/sqlite/SystemStatements.h"

#include <gtest/gtest.h>

#include "ado/sqlite/SqliteConnection.h"
#include "schema/Schema.h"
#include "values/Errore.h"

namespace sqlite_tests {
namespace {

TEST(SystemStatements, EveryShapeRunsOnTheRealTablesAndAgainFromItsPlan) {
  ado::sqlite::SqliteConnection connection;
  connection.ConnectionString = "Provider=SQLite;Data Source=:memory:";
  connection.Open();
  schema::create(connection);
  for (int round = 0; round < 2; ++round) {
    const auto before = connection.statistics().prepared;
    for (const auto& statement : systemStatements()) {
      try {
        connection.Execute(statement.text);
      } catch (const values::Errore& error) {
        ADD_FAILURE() << statement.name << ": " << error.what();
      }
    }
    if (round == 1) {
      EXPECT_EQ(connection.statistics().prepared, before);
    }
  }
}

}  // namespace
}  // namespace sqlite_tests
