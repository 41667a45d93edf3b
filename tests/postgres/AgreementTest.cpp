#include "ado/OverAConnection.h"
#include "postgres/Databases.h"
#include "sqlite/SqliteConnection.h"
#include "support/Fields.h"

namespace {

using provider_cases::shown;

void fill(ado::Connection& connection) {
  for (const char* text :
       {"CREATE TABLE T (ID decimal(10,0) IDENTITY(1,1) NOT NULL, CODE char(4) NOT NULL, NAME nvarchar(12) NULL,"
        " AMOUNT decimal(15,2) NULL, QTY decimal(14,3) NULL, N smallint NULL, DAY datetime NULL, F float NULL,"
        " B bit NULL, LONG nvarchar(max) NULL, CONSTRAINT PK PRIMARY KEY (ID))",
        "CREATE TABLE D (T_ID decimal(10,0) NOT NULL, V int NULL)", "CREATE INDEX IX_T ON T (NAME, N DESC)",
        "INSERT INTO T (CODE, NAME, AMOUNT, QTY, N, DAY, F, B) VALUES ('A1', 'Alfa', 10.50, 1.125, 1, '20110131', 0.5, "
        "1),"
        " ('b2', 'beta', -3.25, NULL, 2, '20110228 13:05:09', 1.25, 0), ('a1', 'ALFA ', 7, 2, 2, NULL, NULL, NULL),"
        " ('5', 'però', 0.01, 3.5, NULL, '20121231', 2, 1), ('C3', NULL, NULL, 2.000, 1, NULL, -1, NULL),"
        " ('_x', '_(.\\%]', 99.99, 0.001, 3, '19991231 23:59:59', 0, 0), ('c3', 'c3', 5, 4, 3, '20110131', 3, 1)",
        "INSERT INTO D (T_ID, V) VALUES (1, 1), (1, 3), (2, 2), (9, 7), (3, NULL)"})
    connection.Execute(text);
}

/// The fields, the values, or the error without what follows its first sentence.
std::string told(ado::Connection& connection, const std::string& statement) {
  try {
    const auto set = connection.Execute(statement);
    return set->State() == ado::adStateClosed ? "closed" : testing_support::described(*set) + " => " + shown(set);
  } catch (const values::Errore& error) {
    return std::string(error.what()).substr(0, 25);
  }
}

TEST(Agreement, AServerSaysWhatTheEmbeddedDatabaseSays) {
  const postgres_tests::TemporaryDatabase database;
  const auto server = database.open();
  sqlite::SqliteConnection embedded;
  embedded.ConnectionString = "Provider=SQLite;Data Source=:memory:";
  embedded.Open();
  fill(embedded);
  fill(*server);
  for (const auto& statement : linesOf("postgres/agree.txt"))
    EXPECT_EQ(told(*server, statement), told(embedded, statement)) << statement;
}

}  // namespace
