#include <sql.h>
#include <sqlext.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>

#include "ado/ProviderCases.h"
#include "odbc/Handle.h"
#include "odbc/Provider.h"

namespace {

constexpr const char* kEmbedded = "SQLite3";

bool hasEmbeddedDriver() {
  const odbc::Handle environment(SQL_HANDLE_ENV, SQL_NULL_HANDLE);
  SQLSetEnvAttr(environment.get(), SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
  std::array<SQLCHAR, 128> name{};
  SQLSMALLINT length = 0;
  SQLUSMALLINT direction = SQL_FETCH_FIRST;
  while (SQL_SUCCEEDED(SQLDrivers(environment.get(), direction, name.data(), static_cast<SQLSMALLINT>(name.size()),
                                  &length, nullptr, 0, nullptr))) {
    if (reinterpret_cast<const char*>(name.data()) == std::string(kEmbedded)) return true;
    direction = SQL_FETCH_NEXT;
  }
  return false;
}

ado::ConnectionPtr opened(const std::string& text) {
  odbc::registerOdbc();
  // The embedded driver knows narrow texts only, and the driver manager turns them as the locale says.
  std::setlocale(LC_CTYPE, "C.UTF-8");
  auto connection = ado::createConnection();
  connection->ConnectionString = text;
  connection->Open();
  return connection;
}

std::string embedded(const std::string& file) {
  return std::string("Provider=ODBC;Driver=") + kEmbedded + ";Database=" + file;
}

/// A SQL Server to run against: the connection string of a database whose tables SCHEDE, CODICI and NOTE may go.
const char* server() { return std::getenv("BUKORVAL_SQLSERVER"); }

ado::ConnectionPtr openedServer() {
  auto connection = opened(server());
  for (const std::string table : {"SCHEDE", "CODICI", "NOTE"})
    connection->Execute("IF OBJECT_ID('" + table + "') IS NOT NULL DROP TABLE " + table);
  return connection;
}

}  // namespace

namespace provider_cases {

std::vector<Provider> servers() {
  if (server() == nullptr) return {};
  return {{"SqlServer", openedServer}};
}

/// The embedded driver's database has a dialect of its own: it can be asked the portable cases only.
std::vector<Provider> databases() {
  auto known = servers();
  if (hasEmbeddedDriver()) known.push_back({"EmbeddedDriver", [] { return opened(embedded(":memory:")); }});
  return known;
}

std::string nameOf(const testing::TestParamInfo<Provider>& info) { return info.param.name; }

INSTANTIATE_TEST_SUITE_P(Odbc, PortableCases, testing::ValuesIn(databases()), nameOf);
INSTANTIATE_TEST_SUITE_P(Odbc, ProviderCases, testing::ValuesIn(servers()), nameOf);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(PortableCases);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(ProviderCases);

}  // namespace provider_cases

namespace {

using provider_cases::outcomeOf, provider_cases::shown;

/// Through a real driver on a file of its own.
class EmbeddedDriver : public testing::Test {
 protected:
  void SetUp() override {
    if (!hasEmbeddedDriver()) GTEST_SKIP() << "the driver " << kEmbedded << " (libsqliteodbc) is not installed";
    path = std::filesystem::temp_directory_path() / ("bukorval_odbc_" + std::to_string(::getpid()) + ".db");
    connection = opened(embedded(path.string()));
    connection->Execute(
        "CREATE TABLE A (ID integer PRIMARY KEY, T varchar(20), N decimal(15,2), D timestamp, I smallint)");
  }
  void TearDown() override {
    connection.reset();
    if (!path.empty()) std::filesystem::remove(path);
  }

  std::filesystem::path path;
  ado::ConnectionPtr connection;
};

TEST_F(EmbeddedDriver, ReadsTypedValuesAndNulls) {
  connection->Execute(
      "INSERT INTO A (ID, T, N, D, I) VALUES (1, 'però €', 9999999999999.99, '2011-01-31 13:05:09', 7)");
  connection->Execute("INSERT INTO A (ID) VALUES (2)");
  const auto set = connection->Execute("SELECT T, N, D, I, ID AS \"città\" FROM A ORDER BY ID");
  EXPECT_EQ((*set)["D"].Value().kind(), values::Kind::Date);
  EXPECT_EQ((*set)["I"].Value().kind(), values::Kind::Int16);
  EXPECT_EQ((*set)["città"].Value(), values::Variant(1));
  EXPECT_EQ(shown(set), "però €|9999999999999.99|31/01/2011 13:05:09|7|1; NULL|NULL|NULL|NULL|2");
  EXPECT_EQ(shown(connection->Execute("SELECT ID FROM A WHERE T = 'però €'")), "1");
}

TEST_F(EmbeddedDriver, AnErrorIsInTheDatabasesWords) {
  EXPECT_EQ(outcomeOf(*connection, "SELECT X FROM NIENTE"), "no such table: NIENTE (1)");
  connection->Execute("INSERT INTO A (ID) VALUES (1)");
  EXPECT_NE(outcomeOf(*connection, "INSERT INTO A (ID) VALUES (1)").find("UNIQUE constraint failed: A.ID"),
            std::string::npos);
}

TEST_F(EmbeddedDriver, AConnectionThatGoesAwayRollsBack) {
  connection->BeginTrans();
  connection->Execute("INSERT INTO A (ID) VALUES (1)");
  connection.reset();
  connection = opened(embedded(path.string()));
  EXPECT_EQ(shown(connection->Execute("SELECT COUNT(*) AS N FROM A")), "0");
}

TEST(OdbcOpen, AFailureSaysWhatTheDriverManagerOrTheDatabaseFound) {
  EXPECT_EQ(errorOf([] { opened("Provider=ODBC;Driver=Nowhere;Server=x"); }),
            "Can't open lib 'Nowhere' : file not found");
  EXPECT_NE(errorOf([] { opened("DSN=nowhere"); }).find("Data source name not found"), std::string::npos);
  if (!hasEmbeddedDriver()) GTEST_SKIP() << "the driver " << kEmbedded << " (libsqliteodbc) is not installed";
  EXPECT_EQ(errorOf([] { opened(embedded("/nowhere/budget.db")); }), "connect failed");
}

}  // namespace
