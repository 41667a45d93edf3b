#include <algorithm>
#include <functional>
#include <random>
#include <thread>

#include "ado/OverAConnection.h"
#include "postgres/ConnectionWords.h"
#include "postgres/Databases.h"
#include "values/Text.h"

namespace {

using provider_cases::outcomeOf, provider_cases::shown;
using testing::HasSubstr, testing::Not;

constexpr const char* kEnded = "The transaction has been rolled back by the database and must be ended first";

/// A database with an empty table A.
struct PostgresTable : testing::Test {
  const postgres_tests::TemporaryDatabase database;
  std::shared_ptr<postgres::PostgresConnection> connection = database.open();
  postgres::Server raw = postgres_tests::rawServer(database.name());

  PostgresTable() {
    run("CREATE TABLE A (ID decimal(10,0) IDENTITY(1,1) NOT NULL, X int NOT NULL, Y nvarchar(40) NULL,"
        " CONSTRAINT PK PRIMARY KEY (ID))");
  }
  void run(std::string_view text) const { connection->Execute(text); }
  std::string outcome(std::string_view text) const { return outcomeOf(*connection, text); }
  void past(const std::string& sql) const { postgres::runSimple(raw.get(), sql); }
  void waitForAWaiter() const {
    past(
        "DO $$ BEGIN WHILE NOT EXISTS (SELECT FROM pg_locks WHERE locktype = 'advisory' AND NOT granted) LOOP"
        " PERFORM pg_sleep(0.01); END LOOP; END $$");
  }
  static void breakConnection(postgres::PostgresConnection& connection) {
    EXPECT_NE(errorOf([&] { connection.runBeside("SELECT pg_terminate_backend(pg_backend_pid())"); }), "");
  }
  void breakConnections() const {
    past(
        "SELECT count(pg_terminate_backend(pid, 5000)) FROM pg_stat_activity WHERE datname = current_database()"
        " AND pid <> pg_backend_pid()");
  }
};
using PostgresTransactions = PostgresTable;
using PostgresTexts = PostgresTable;

TEST(PostgresWords, AreLibpqsOwnOrCommonNamesForThem) {
  const auto words = postgres::wordsOf(
      "Provider=PostgreSQL;Server=h;Initial Catalog=d;UID=u;PWD=\"a;b\";sslmode=require;"
      "Service=x;Mode=Read",
      "", "");
  EXPECT_THAT(words.names, testing::ElementsAre("client_encoding", "fallback_application_name", "host", "dbname",
                                                "user", "password", "sslmode", "service"));
  EXPECT_EQ(words.values[5], "a;b");
  EXPECT_TRUE(words.readOnly);
  for (const std::string text : {"Host=h;Pasword=x", "Host=h;Mode=Write", "Host=/nowhere;User=u", "Port=x"}) {
    postgres::PostgresConnection connection;
    connection.ConnectionString = text + ";Password=secret";
    const auto told = errorOf([&] { connection.Open(); });
    EXPECT_NE(told, "") << text;
    EXPECT_THAT(told, Not(HasSubstr("secret"))) << text;
    EXPECT_EQ(connection.State(), ado::adStateClosed);
  }
}

TEST_F(PostgresTransactions, ALostConnectionKeepsNothingAndIsMadeAgain) {
  run("INSERT INTO A (X) VALUES (1)");
  connection->BeginTrans();
  run("INSERT INTO A (X) VALUES (2)");
  breakConnections();
  EXPECT_THAT(outcome("INSERT INTO A (X) VALUES (3)"), HasSubstr("La connessione al database è caduta ("));
  EXPECT_EQ(outcome("INSERT INTO A (X) VALUES (4)"), kEnded);
  EXPECT_THROW(connection->CommitTrans(), values::Errore);
  EXPECT_NO_THROW(connection->RollbackTrans());
  EXPECT_EQ(outcome("SELECT X FROM A"), "1");
  breakConnections();
  EXPECT_THAT(outcome("SELECT X FROM A"), HasSubstr("La connessione al database è caduta ("));
  EXPECT_EQ(outcome("SELECT X FROM A"), "1");
}

TEST_F(PostgresTransactions, ACollisionIsRefusedInItalianAndTakesEverythingBack) {
  run("INSERT INTO A (X) VALUES (1)");
  connection->IsolationLevel = ado::adXactSerializable;
  connection->BeginTrans();
  run("SELECT X FROM A");
  past("UPDATE a SET x = 2");
  run("INSERT INTO A (X) VALUES (5)");
  EXPECT_THAT(outcome("UPDATE A SET X = 3"), HasSubstr("Un altro utente"));
  EXPECT_EQ(outcome("SELECT X FROM A"), kEnded);
  EXPECT_THROW(connection->CommitTrans(), values::Errore);
  connection->RollbackTrans();
  EXPECT_EQ(outcome("SELECT X FROM A"), "2");
}

TEST_F(PostgresTransactions, APermissionThatIsMissingIsSaid) {
  connection->runBeside("SET ROLE pg_monitor");
  EXPECT_EQ(outcome("SELECT X FROM A"), "The user has no permission for this (permission denied for table a)");
}

TEST_F(PostgresTransactions, RowsThatAreCommittedLaterAreTold) {
  run("INSERT INTO A (X) VALUES (1)");
  run("INSERT INTO A (X) VALUES (2)");
  const auto watcher = database.open();
  const auto since = [&](std::int64_t mark) { return watcher->rowsSince("A", "ID", mark); };
  // What others have begun on the server, other tests among them, holds the mark back.
  const auto isQuiet = [&] { return since(watcher->rowMark()).empty(); };
  for (int tried = 0; tried < 3000 && !isQuiet(); ++tried) std::this_thread::sleep_for(std::chrono::milliseconds(10));
  EXPECT_TRUE(isQuiet());
  // With a number of its own for what a savepoint holds.
  past("BEGIN; SAVEPOINT a; UPDATE a SET x = 3 WHERE id = 1; RELEASE a");
  const auto during = watcher->rowMark();
  const auto other = postgres_tests::rawServer(database.name());
  postgres::runSimple(other.get(), "UPDATE a SET x = 4 WHERE id = 2");
  EXPECT_THAT(since(during), testing::ElementsAre(2));
  const auto late = watcher->rowMark();
  past("COMMIT");
  EXPECT_THAT(since(late), testing::Contains(1));
  // Of a moment that this server has not had, everything is told.
  EXPECT_THAT(since(watcher->rowMark() + 1000), testing::SizeIs(2));
  EXPECT_THAT(since(watcher->rowMark() - (std::int64_t{1} << 40)), testing::SizeIs(2));
}

/// The end of a turn: by its holder, or by the server when it has lost its holder.
TEST_F(PostgresTransactions, WritersTakeTurnsAndReadersDoNotWait) {
  run("INSERT INTO A (X) VALUES (0)");
  const auto impatient = database.open(";Busy Timeout=0"), patient = database.open(";Busy Timeout=60");
  const auto busy = testing::StartsWith("Il database è in uso da parte di bukorval, utente bukorval (PID ");
  impatient->IsolationLevel = patient->IsolationLevel = connection->IsolationLevel = ado::adXactSerializable;
  const std::function<void()> ends[] = {[&] { connection->CommitTrans(); }, [&] { connection->RollbackTrans(); },
                                        [&] { breakConnection(*connection); }};
  for (const auto& end : ends) {
    connection->BeginTrans();
    EXPECT_EQ(outcomeOf(*impatient, "SELECT COUNT(*) AS N FROM A"), "1");
    EXPECT_THAT(errorOf([&] { impatient->BeginTrans(); }), busy);
    EXPECT_THAT(outcomeOf(*impatient, "UPDATE A SET X = 9"), busy);
    std::thread next([&] {
      patient->BeginTrans();
      patient->Execute("UPDATE A SET X = X + 10");
      patient->CommitTrans();
    });
    run("UPDATE A SET X = X + 1");
    waitForAWaiter();
    end();
    next.join();
  }
  connection->RollbackTrans();
  EXPECT_EQ(outcomeOf(*impatient, "UPDATE A SET X = X + 100"), "closed");
  EXPECT_EQ(outcome("SELECT X FROM A"), "131") << "each saw what the one before it left";
}

TEST_F(PostgresTransactions, ARunIsSentTogetherAndAFailureInItTakesEverythingBack) {
  run("CREATE UNIQUE INDEX UX ON A (X)");
  const auto insert = [&](int x) { run("INSERT INTO A (X) VALUES (" + std::to_string(x) + ")"); };
  connection->BeginTrans();
  for (int x = 1; x <= 500; ++x) insert(x);
  EXPECT_EQ(outcome("SELECT @@IDENTITY"), "500");
  EXPECT_EQ(outcome("SELECT COUNT(*) AS N, MAX(X) AS M FROM A"), "500|500");
  for (int x = 501; x <= 520; ++x) {
    insert(x);
    run("UPDATE A SET Y = 'y' WHERE X = " + std::to_string(x));
  }
  EXPECT_EQ(outcome("SELECT @@IDENTITY"), "520") << "of the insert before the last update";
  connection->CommitTrans();
  EXPECT_EQ(outcome("SELECT COUNT(Y) AS N FROM A"), "20");
  for (const bool asks : {false, true}) {
    connection->BeginTrans();
    for (int x = 521; x <= 530; ++x) insert(x);
    insert(1);
    const auto told = errorOf([&] { asks ? run("SELECT X FROM A") : connection->CommitTrans(); });
    EXPECT_THAT(told, HasSubstr("duplicate key in A"));
    EXPECT_EQ(outcome("INSERT INTO A (X) VALUES (600)"), kEnded);
    connection->RollbackTrans();
    EXPECT_EQ(outcome("SELECT COUNT(*) AS N FROM A"), "520");
  }
  connection->BeginTrans();
  for (int x = 521; x <= 540; ++x) insert(x);
  connection->RollbackTrans();
  EXPECT_EQ(outcome("SELECT COUNT(*) AS N FROM A"), "520");
}

TEST_F(PostgresTransactions, ReadModeRefusesWrites) {
  const auto reader = database.open(";Mode=Read");
  EXPECT_EQ(outcomeOf(*reader, "SELECT X FROM A"), "");
  EXPECT_EQ(outcomeOf(*reader, "INSERT INTO A (X) VALUES (1)"), "The database is open for reading only");
}

TEST_F(PostgresTable, TheIdentityIsTheStatementsOwn) {
  run("CREATE TABLE B (N int IDENTITY(1,1) NOT NULL, Z int NULL)");
  for (int i = 0; i < 5; ++i) run("INSERT INTO B (Z) VALUES (0)");
  past(
      "CREATE FUNCTION t() RETURNS trigger LANGUAGE plpgsql AS 'BEGIN INSERT INTO b (z) VALUES (1); RETURN NULL; END'");
  past("CREATE TRIGGER t AFTER INSERT ON a FOR EACH ROW EXECUTE FUNCTION t()");
  const auto other = database.open();
  other->Execute("INSERT INTO A (X) VALUES (1)");
  run("INSERT INTO A (X) VALUES (2)");
  other->Execute("INSERT INTO A (X) SELECT Z FROM B");
  EXPECT_EQ(outcome("SELECT @@IDENTITY"), "2");
  EXPECT_EQ(outcomeOf(*other, "SELECT @@IDENTITY"), "9");
}

TEST_F(PostgresTable, TextsThatDifferInLiteralsShareOnePlanAndFollowChangesOfTheTables) {
  for (int i = 0; i < 300; ++i) run("INSERT INTO A (X, Y) VALUES (" + std::to_string(i) + ", 'y')");
  EXPECT_EQ(connection->cachedPlans(), 1U);
  EXPECT_EQ(outcome("SELECT * FROM A WHERE X = 1"), "2|1|y");
  past("ALTER TABLE a ADD COLUMN z int DEFAULT 5");
  EXPECT_EQ(outcome("SELECT * FROM A WHERE 2 = X"), "3|2|y|5");
  database.open()->Execute("CREATE TABLE C (X varchar(5) NULL)");
  connection->BeginTrans();
  run("INSERT INTO C (X) VALUES ('c')");
  run("CREATE TABLE E (X int NULL)");
  connection->RollbackTrans();
  EXPECT_EQ(outcome("SELECT X FROM C"), "");
  EXPECT_THAT(outcome("SELECT X FROM E"), HasSubstr("Invalid object name"));
}

/// Every letter, alone and behind another.
std::vector<std::string> letters() {
  std::vector<std::string> found;
  for (unsigned code = ' '; code < 0x180; ++code) {
    const std::string letter =
        code < 0x80 ? std::string(1, static_cast<char>(code))
                    : std::string{static_cast<char>(0xC0U | code >> 6U), static_cast<char>(0x80U | (code & 0x3FU))};
    found.insert(found.end(), {letter, "x" + letter, letter + " "});
  }
  return found;
}

/// Random texts of few letters, which are often equal or nearly so.
std::vector<std::string> mixtures() {
  const std::vector<std::string> parts{"a", "A", "à", "À", "á", "b", "Z", "ž", "_", "9", "-", " ", "~", "€"};
  std::mt19937 random(11);
  std::vector<std::string> found(500);
  for (auto& text : found)
    for (auto length = random() % 5; length > 0; --length) text += parts[random() % parts.size()];
  return found;
}

TEST_F(PostgresTexts, StandInTheOrderOfOurOwn) {
  for (auto own : {letters(), mixtures()}) {
    run("DELETE FROM A");
    for (const auto& text : own) {
      std::string quoted;
      for (const char c : text) quoted.append(c == '\'' ? 2 : 1, c);
      run("INSERT INTO A (X, Y) VALUES (0, N'" + quoted + "')");
    }
    std::ranges::stable_sort(own, [](const auto& a, const auto& b) { return values::compareText(a, b) < 0; });
    const auto ordered = connection->Execute("SELECT Y FROM A ORDER BY Y, ID");
    for (const auto& text : own) {
      EXPECT_EQ(values::toPlainText((*ordered)["Y"].Value()), text);
      ordered->MoveNext();
    }
    const auto same = [](const auto& a, const auto& b) { return values::compareText(a, b) == 0; };
    const auto distinct = std::ranges::unique(own, same).begin() - own.begin();
    EXPECT_EQ(outcome("SELECT COUNT(DISTINCT Y) AS N FROM A"), std::to_string(distinct));
  }
}

}  // namespace
