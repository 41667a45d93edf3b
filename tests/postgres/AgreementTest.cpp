#include <map>
#include <random>

#include "ado/OverAConnection.h"
#include "postgres/Databases.h"
#include "sqlite/SqliteConnection.h"
#include "support/Fields.h"
#include "values/Text.h"

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

/// Of texts that are equal any may stand for the others.
std::string alike(const std::string& text) {
  std::string all;
  for (const char c : values::foldText(text)) {
    if (c == '|' || c == ';') all.resize(all.find_last_not_of(' ') + 1);
    all += c;
  }
  return std::string(values::rtrim(all));
}

/// One database of each kind with the same tables.
class Agreement : public testing::Test {
 protected:
  Agreement() : server(database_.open()) {
    embedded.ConnectionString = "Provider=SQLite;Data Source=:memory:";
    embedded.Open();
    fill(embedded);
    fill(*server);
  }

 private:
  const postgres_tests::TemporaryDatabase database_;

 protected:
  const std::shared_ptr<postgres::PostgresConnection> server;
  sqlite::SqliteConnection embedded;
};

TEST_F(Agreement, AServerSaysWhatTheEmbeddedDatabaseSays) {
  for (const auto& statement : linesOf("postgres/agree.txt"))
    EXPECT_EQ(told(*server, statement), told(embedded, statement)) << statement;
}

/// Texts at random from a table of the ways to write each word; deep inside only those that need no other word.
class Grammar {
 public:
  Grammar(const std::vector<std::string>& lines, unsigned seed) : random_(seed) {
    for (const auto& line : lines) {
      const auto blank = line.find(' ');
      ways_[line.substr(0, blank)].push_back(line.substr(blank + 1));
    }
  }

  std::string write(const std::string& word, int depth) {
    const auto& ways = ways_.at(word);
    const auto deep = std::ranges::find_if(
        ways, [](const auto& way) { return way.find(" <") + 1 || way[0] == '<' || way.find("(<") + 1; });
    const auto choice = depth > 0 || deep == ways.begin() ? ways.size() : static_cast<std::size_t>(deep - ways.begin());
    std::string text = ways[random_() % choice];
    for (auto open = text.find('<'); open != std::string::npos; open = text.find('<', open)) {
      const auto close = text.find('>', open);
      const auto inner = text.substr(open + 1, close - open - 1);
      if (!ways_.contains(inner)) {  // an operator
        ++open;
        continue;
      }
      const auto written = write(inner, depth - 1);
      text.replace(open, close - open + 1, written);
      open += written.size();
    }
    return text;
  }

 private:
  std::mt19937 random_;
  std::map<std::string, std::vector<std::string>> ways_;
};

TEST_F(Agreement, HoldsForQueriesMadeAtRandom) {
  Grammar grammar(linesOf("postgres/grammar.txt"), 1);
  for (int i = 0; i < 2000; ++i) {
    const auto statement = grammar.write("query", 3);
    EXPECT_EQ(alike(told(*server, statement)), alike(told(embedded, statement))) << statement;
  }
}

}  // namespace
