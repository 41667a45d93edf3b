#ifndef _WIN32
#include <signal.h>
#include <sys/wait.h>
#endif

#include <fstream>

#include "ado/ProviderCases.h"
#include "sqlite/Provider.h"
#include "sqlite/TemporaryDatabase.h"

namespace provider_cases {

const Provider kSqlite{"SQLite", [] {
                         sqlite::registerSqlite();
                         auto connection = ado::createConnection();
                         connection->ConnectionString = "Provider=SQLite;Data Source=:memory:";
                         connection->Open();
                         return connection;
                       }};

INSTANTIATE_TEST_SUITE_P(Sqlite, ProviderCases, testing::Values(kSqlite));
INSTANTIATE_TEST_SUITE_P(Sqlite, PortableCases, testing::Values(kSqlite));

}  // namespace provider_cases

namespace {

using namespace sqlite_tests;
using provider_cases::shown;

/// Runs raw engine text on the file, past the provider.
void runRaw(const TemporaryDatabase& file, const char* sql) {
  sqlite3* raw = nullptr;
  ASSERT_EQ(sqlite3_open(file.path().c_str(), &raw), SQLITE_OK);
  const sqlite::Database database(raw);
  sqlite::run(raw, sql);
}

TEST(SqliteOpen, AMissingFileIsMadeOnlyWhenAsked) {
  const TemporaryDatabase file;
  EXPECT_NE(errorOf([&] { file.open(""); }).find("does not exist"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(file.path()));
  file.open()->Execute("CREATE TABLE A (X int NULL)");
  EXPECT_EQ(shown(file.open("")->Execute("SELECT COUNT(*) AS N FROM A")), "0");
}

TEST(SqliteOpen, SaysWhatIsWrong) {
  const TemporaryDatabase file;
  std::ofstream(file.path()) << std::string(4096, 'x');
  EXPECT_NE(errorOf([&] { file.open(""); }).find("not a database"), std::string::npos);
  EXPECT_NE(errorOf([] { sqlite::SqliteConnection().Open(); }).find("Data Source"), std::string::npos);
}

sqlite3* lastOpened = nullptr;
int rememberOpened(sqlite3* database, char**, const sqlite3_api_routines*) {
  lastOpened = database;
  return SQLITE_OK;
}

int setting(const char* pragma) {
  const auto statement = sqlite::prepare(lastOpened, pragma);
  return sqlite3_step(statement.get()) == SQLITE_ROW ? sqlite3_column_int(statement.get(), 0) : -1;
}

TEST(SqliteOpen, CommitsOutliveThePowerAndWaitsAreShortUnlessToldOtherwise) {
  struct Case {
    const char* words;
    int synchronous, milliseconds;
  };
  const TemporaryDatabase file;
  ASSERT_EQ(sqlite3_auto_extension(reinterpret_cast<void (*)()>(rememberOpened)), SQLITE_OK);
  for (const auto& [words, synchronous, milliseconds] :
       {Case{"", 2, 5000}, Case{";synchronous=normal", 1, 5000}, Case{";Synchronous=Off", 0, 5000},
        Case{";Synchronous=Full;Busy Timeout=0", 2, 0}, Case{";Busy Timeout=600", 2, 600'000}}) {
    const auto connection = file.open(std::string(words) + ";Create=True");
    EXPECT_EQ(setting("PRAGMA synchronous"), synchronous) << words;
    EXPECT_EQ(setting("PRAGMA busy_timeout"), milliseconds) << words;
  }
  sqlite3_reset_auto_extension();
  for (const char* words : {";Synchronous=Maybe", ";Busy Timeout=601", ";Busy Timeout=-1", ";Busy Timeout=1s"})
    EXPECT_NE(errorOf([&] { file.open(words); }).find("not '"), std::string::npos) << words;
}

TEST(SqliteOpen, ReadModeRefusesWrites) {
  const TemporaryDatabase file;
  file.open()->Execute("CREATE TABLE A (X int NULL)");
  const auto reader = file.open(";Mode=Read");
  EXPECT_EQ(shown(reader->Execute("SELECT X FROM A")), "");
  EXPECT_NE(errorOf([&] { reader->Execute("INSERT INTO A (X) VALUES (1)"); }).find("reading only"), std::string::npos);
}

/// A file with an empty table A.
struct SqliteTable : testing::Test {
  const TemporaryDatabase file;
  std::shared_ptr<sqlite::SqliteConnection> connection = file.open();
  SqliteTable() { connection->Execute("CREATE TABLE A (X int NOT NULL, Y varchar(10) NULL)"); }
};
using SqliteTransactions = SqliteTable;
using SqlitePlans = SqliteTable;

TEST_F(SqliteTable, TextsKeepTheOrderThatTheFileWasMadeWith) {
  connection->Execute("CREATE UNIQUE INDEX UX_A ON A (Y)");
  connection.reset();
  const struct {
    const char *made, *sorted, *range, *highest;
  } kFiles[] = {{"BK_ORDER", "e; É; éa; ez", "e; É; éa; ez", "EZ"}, {"BK_TEXT", "e; ez; É; éa", "e; ez", "ÉA"}};
  for (const auto& row : kFiles) {
    runRaw(file, ("PRAGMA writable_schema = 1; UPDATE sqlite_master SET sql = replace(sql, 'BK_ORDER', '" +
                  std::string(row.made) + "')")
                     .c_str());
    connection = file.open();
    connection->Execute("CREATE TABLE B (Y varchar(10) NULL)");
    for (const std::string table : {"A (X, Y) VALUES (1, ", "B (Y) VALUES ("})
      for (const char* text : {"ez", "éa", "É", "e"}) connection->Execute("INSERT INTO " + table + "N'" + text + "')");
    const auto found = [&](const char* text) { return shown(connection->Execute(text)); };
    EXPECT_EQ(found("SELECT Y FROM A ORDER BY Y"), row.sorted) << row.made;
    EXPECT_EQ(found("SELECT Y FROM B ORDER BY Y"), row.sorted) << row.made << ", in a table that is new";
    EXPECT_EQ(found("SELECT Y FROM A WHERE Y BETWEEN 'e' AND 'ez' ORDER BY Y"), row.range) << row.made;
    EXPECT_EQ(found("SELECT MAX(UPPER(Y)) AS M FROM A"), row.highest) << row.made;
    EXPECT_EQ(found("WITH Q AS (SELECT Y AS K FROM B WHERE Y >= 'É') SELECT COUNT(*) AS N FROM A, Q WHERE K = Y"),
              row.made == std::string("BK_TEXT") ? "2" : "3");
    connection->Execute("DROP TABLE B");
    connection->Execute("DELETE FROM A");
    connection.reset();
  }
}

#ifndef _WIN32  // no process splits in two there
TEST_F(SqliteTransactions, AKilledWriterLeavesNothingOfItsTransaction) {
  connection->Execute("INSERT INTO A (X) VALUES (1)");
  connection.reset();
  const pid_t child = fork();
  if (child == 0) {
    connection = file.open();
    connection->Execute("INSERT INTO A (X) VALUES (2)");
    connection->BeginTrans();
    for (int i = 0; i < 50'000; ++i) connection->Execute("INSERT INTO A (X) VALUES (3)");
    ::kill(::getpid(), SIGKILL);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFSIGNALED(status));
  EXPECT_EQ(shown(file.open()->Execute("SELECT X FROM A ORDER BY X")), "1; 2");
}

TEST_F(SqliteTransactions, AnotherProcessLeavesTheLogToTheConnectionsOfThisOne) {
  connection.reset();
  int begin[2];
  ASSERT_EQ(::pipe(begin), 0);
  const pid_t child = fork();
  if (child == 0) {
    char now = 0;
    const bool told = ::read(begin[0], &now, 1) == 1;
    file.open()->Execute("SELECT X FROM A");
    ::_exit(told ? 0 : 1);
  }
  const auto first = file.open(), second = file.open();
  first->Execute("INSERT INTO A (X) VALUES (1)");
  ASSERT_EQ(::write(begin[1], "!", 1), 1);
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_EQ(status, 0);
  EXPECT_TRUE(std::filesystem::exists(file.path() + "-wal"));
}
#endif

TEST_F(SqliteTransactions, ARollbackByTheEngineStopsTheRunUntilItIsEnded) {
  runRaw(file, "CREATE TRIGGER T BEFORE INSERT ON A WHEN NEW.X = 13 BEGIN SELECT RAISE(ROLLBACK, 'thirteen'); END");
  connection->BeginTrans();
  connection->Execute("INSERT INTO A (X) VALUES (1)");
  EXPECT_EQ(errorOf([&] { connection->Execute("INSERT INTO A (X) VALUES (13)"); }), "thirteen");
  EXPECT_THROW(connection->Execute("INSERT INTO A (X) VALUES (2)"), values::Errore);
  EXPECT_THROW(connection->CommitTrans(), values::Errore);
  EXPECT_NO_THROW(connection->RollbackTrans());
  EXPECT_EQ(shown(connection->Execute("SELECT X FROM A")), "");
}

TEST_F(SqliteTransactions, AConnectionThatGoesAwayRollsBack) {
  connection->BeginTrans();
  connection->Execute("INSERT INTO A (X) VALUES (1)");
  connection.reset();
  EXPECT_EQ(shown(file.open()->Execute("SELECT X FROM A")), "");
}

TEST_F(SqlitePlans, TextsThatDifferInLiteralsShareOnePlan) {
  connection->Execute("INSERT INTO A (X, Y) VALUES (0, 'zero')");
  const auto before = connection->statistics();
  for (int i = 1; i < 1000; ++i) {
    const auto number = std::to_string(i);
    connection->Execute("INSERT INTO A (X, Y) VALUES (" + number + ", 'y" + number + "')");
  }
  EXPECT_EQ(connection->statistics().prepared, before.prepared);
  EXPECT_EQ(connection->statistics().executed, before.executed + 999);
  EXPECT_EQ(shown(connection->Execute("SELECT COUNT(*) AS N, MAX(X) AS M FROM A WHERE Y LIKE 'y%'")), "999|999");
}

TEST_F(SqlitePlans, TheCacheIsBounded) {
  std::string list = "1";
  for (int i = 0; i < 600; ++i) {
    connection->Execute("SELECT X FROM A WHERE X IN (" + list + ")");
    list += ",1";
  }
  EXPECT_LE(connection->cachedPlans(), 256U);
}

TEST_F(SqlitePlans, FollowChangesOfTheTables) {
  connection->Execute("INSERT INTO A (X) VALUES (1)");
  EXPECT_EQ(shown(connection->Execute("SELECT * FROM A")), "1|NULL");
  // A plan that kept its rows open would make the drop fail.
  connection->Execute("DROP TABLE A");
  connection->Execute("CREATE TABLE A (X varchar(5) NOT NULL, Y int NULL)");
  connection->Execute("INSERT INTO A (X, Y) VALUES (1, 2)");
  EXPECT_EQ(shown(connection->Execute("SELECT * FROM A")), "1|2");

  file.open()->Execute("CREATE TABLE B (Z decimal(5,2) NULL)");
  connection->Execute("INSERT INTO B (Z) VALUES (1.25)");
  EXPECT_EQ(shown(connection->Execute("SELECT Z FROM B")), "1.25");

  connection->BeginTrans();
  connection->Execute("CREATE TABLE C (X int NULL)");
  connection->RollbackTrans();
  EXPECT_THROW(connection->Execute("SELECT X FROM C"), values::Errore);
}

}  // namespace
