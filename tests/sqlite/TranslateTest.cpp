#include <cstdlib>

#include "sqlite/emitter/Translate.h"
#include "tsql/SmallCatalog.h"

namespace {

using namespace sqlite;
using testing::HasSubstr, testing::Not;

Translation translated(std::string_view text) {
  static const tsql_tests::SmallCatalog catalog;
  return translate(tsql::scan(text), catalog, "s_");
}

std::string failure(std::string_view text) {
  return errorOf([&] { translated(text); });
}

TEST(Translate, WhatTheEngineCannotDoIsNamed) {
  const std::pair<const char*, const char*> cases[] = {
      {"SELECT SOUNDEX(CODE) FROM T", "'SOUNDEX' is not a function that the embedded database knows"},
      {"SELECT @@IDENTITY + 1", "Must declare the scalar variable \"@@IDENTITY\""},
      {"CREATE TABLE X (A DECIMAL(28,6))", "at most 18 digits"},
      {"CREATE TABLE X (A DECIMAL(8,2) DEFAULT 'x')", "must be a whole number"},
  };
  for (const auto& [text, expected] : cases) EXPECT_THAT(failure(text), HasSubstr(expected)) << text;
}

TEST(Translate, AJoinedExpressionIsStagedWithItsKeyOrAnIndex) {
  const auto plan = translated(
      "WITH A AS (SELECT DISTINCT ID, CODE FROM T LEFT OUTER JOIN D ON D_T = ID WHERE N = 1),"
      " B AS (SELECT ID AS K, SUM(D_VALUE) AS V FROM D INNER JOIN A ON A.ID = D_T GROUP BY ID),"
      " C AS (SELECT MAX(D_ID) AS M FROM D INNER JOIN A ON A.ID = D_T GROUP BY D_T)"
      " SELECT A.*, V FROM A LEFT OUTER JOIN B ON A.ID = B.K LEFT OUTER JOIN C ON C.M = A.ID");
  ASSERT_EQ(plan.prepare.size(), 3u);
  EXPECT_EQ(plan.cleanup.size(), 3u);
  EXPECT_THAT(plan.setup[0].sql, HasSubstr("\"ID\" INTEGER PRIMARY KEY"));
  // The join cannot change what DISTINCT leaves.
  EXPECT_THAT(plan.prepare[0].sql, Not(HasSubstr("\"D\"")));
  EXPECT_THAT(plan.setup[1].sql, HasSubstr("\"K\" INTEGER PRIMARY KEY"));
  EXPECT_THAT(plan.setup[2].sql, HasSubstr("\"M\" NUMERIC"));
  EXPECT_THAT(plan.setup[3].sql, HasSubstr("CREATE INDEX"));
  EXPECT_THAT(plan.main.sql, HasSubstr("temp.\"s_B\""));
}

/// Statements of every kind, mutated: nothing but a described failure may come out.
TEST(Translate, RandomTextsNeverDoMoreThanFail) {
  const std::vector<std::string> corpus = {
      ";WITH P AS (SELECT 1 AS N UNION ALL SELECT N + 1 FROM P WHERE N < 12) SELECT P.N, D_VALUE FROM P LEFT OUTER "
      "JOIN D ON D_T = P.N ORDER BY P.N",
      "WITH A AS (SELECT DISTINCT ID, CODE FROM T WITH (NOLOCK)), B AS (SELECT ID AS K, SUM(D_VALUE) AS V FROM D INNER "
      "JOIN A ON A.ID = D_T WHERE D_ID = 0 GROUP BY ID) SELECT A.*, NULL AS X FROM A LEFT OUTER JOIN B ON A.ID = B.K",
      " IF NOT EXISTS ( SELECT TOP 1 1 FROM D WHERE D_T = 7 ) BEGIN INSERT INTO D ( D_T, D_VALUE ) VALUES ( 7, 1.5 ) "
      "END ",
      "UPDATE T SET AMOUNT = ISNULL(AMOUNT, 12.345), DAY = '20110131', CODE = N'a''b' WHERE ID = 3 AND CODE LIKE 'x%'",
      "DELETE FROM T WHERE CODE NOT IN ('150 ', '151 ', NULL) AND (N BETWEEN 1 AND 2 OR DAY IS NOT NULL)",
      "SELECT CASE WHEN EXISTS (SELECT 1 FROM D WHERE D_T = ID) THEN 1 ELSE 0 END AS F, CODE + ' - ' + "
      "CONVERT(NVARCHAR(10), N) FROM T ORDER BY 1 DESC",
      "CREATE TABLE X (A DECIMAL(10,0) IDENTITY(1,1) NOT NULL, B NVARCHAR(10) NULL DEFAULT 'z', CONSTRAINT PK PRIMARY "
      "KEY (A))",
      "CREATE UNIQUE INDEX I ON T (CODE ASC, N DESC) INCLUDE (AMOUNT)",
      "SELECT AVG(AMOUNT), MIN(CODE), AMOUNT * QTY / 7 - 2 % 3 FROM T GROUP BY AMOUNT, QTY HAVING SUM(AMOUNT) > 10.5",
  };
  const std::string pieces[] = {"(",       ")",     "'",  ",", "SELECT ", " FROM ",     "NULL",
                                " AND ",   "--",    "/*", "[", "\"",      "@@IDENTITY", "99999999999999999999",
                                " CASE ",  " END ", "*",  ".", "''",      "\xC3\xA8",   "1e5",
                                " UNION ", " TOP ", "N'", "\0"};
  const char* runs = std::getenv("BUKORVAL_FUZZ_RUNS");
  const long count = runs ? std::atol(runs) : 20000;
  std::mt19937_64 random(7);
  const auto below = [&](std::size_t n) { return std::uniform_int_distribution<std::size_t>(0, n - 1)(random); };
  long accepted = 0;
  for (long i = 0; i < count; ++i) {
    std::string text = corpus[below(corpus.size())];
    for (std::size_t edits = below(4); edits > 0 && !text.empty(); --edits) {
      const std::size_t at = below(text.size());
      switch (below(4)) {
        case 0: text.erase(at, 1 + below(12)); break;
        case 1: text.insert(at, pieces[below(std::size(pieces))]); break;
        case 2: text[at] = static_cast<char>(below(256)); break;
        default: text += corpus[below(corpus.size())].substr(below(20)); break;
      }
    }
    try {
      translated(text);
      ++accepted;
    } catch (const values::Errore& error) {
      ASSERT_STRNE(error.what(), "") << text;
    }
  }
  EXPECT_GT(accepted, count / 10);
  EXPECT_LT(accepted, count);
}

}  // namespace
