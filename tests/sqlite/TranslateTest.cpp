#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "sqlite/emitter/Translate.h"
#include "sqlite/storage/StoredType.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace sqlite {

using namespace tsql;

namespace {

using testing::HasSubstr;
using testing::Not;

/// Two tables: cards with an identity, and their details.
class SmallCatalog : public Catalog {
 public:
  SmallCatalog() {
    tables_ = {
        {"T",
         {column("ID", "DECIMAL(10,0)", false), column("CODE", "NCHAR(4)"), column("AMOUNT", "DECIMAL(15,2)"),
          column("QTY", "DECIMAL(14,3)"), column("DAY", "DATETIME"), column("N", "SMALLINT")}},
        {"D", {column("D_ID", "DECIMAL(10,0)"), column("D_T", "DECIMAL(10,0)"), column("D_VALUE", "DECIMAL(15,2)")}}};
    tables_[0].columns[0].identity = true;
  }
  const Table* find(std::string_view name) const override {
    for (const auto& table : tables_)
      if (values::compareText(table.name, name) == 0) return &table;
    return nullptr;
  }

 private:
  static Column column(const char* name, const char* type, bool nullable = true) {
    Column result{name, parseDeclaredType(type), false};
    result.type.nullable = nullable;
    return result;
  }
  std::vector<Table> tables_;
};

Translation translated(std::string_view text) {
  static const SmallCatalog catalog;
  const Scan cut = scan(text);
  return translate(cut, catalog, "s_");
}

std::string failure(std::string_view text) {
  try {
    translated(text);
  } catch (const values::Errore& error) {
    return error.what();
  }
  return "";
}

TEST(Dialect, TextsShareAKeyWhenOnlyLiteralsDiffer) {
  const auto key = [](std::string_view text) { return scan(text).key; };
  EXPECT_EQ(key("SELECT ID FROM T WHERE N = 1 AND CODE = 'a'"),
            key("select id\r\nfrom t where n = 22 and code = N'b''c' -- x"));
  const char* apart[][2] = {
      {"SELECT ID FROM T WHERE AMOUNT > 1.5", "SELECT ID FROM T WHERE AMOUNT > 1.55"},
      {"SELECT ID FROM T WHERE CODE LIKE 'a%'", "SELECT ID FROM T WHERE CODE LIKE '%a'"},
      {"SELECT TOP 1 ID FROM T", "SELECT TOP 2 ID FROM T"},
      {"SELECT ID, N FROM T ORDER BY 1", "SELECT ID, N FROM T ORDER BY 2"},
      {"SELECT CAST(N AS NVARCHAR(3)) FROM T", "SELECT CAST(N AS NVARCHAR(4)) FROM T"},
      {"SELECT CONVERT(NVARCHAR(10), DAY, 112) FROM T", "SELECT CONVERT(NVARCHAR(10), DAY, 103) FROM T"},
      {"SELECT AMOUNT / 3 FROM T", "SELECT AMOUNT / 333 FROM T"},
      {"SELECT ID FROM T WHERE N = 1", "SELECT ID FROM T WHERE N = 12345678901"},
  };
  for (const auto& pair : apart) EXPECT_NE(key(pair[0]), key(pair[1])) << pair[0];
}

TEST(Dialect, WhatItDoesNotKnowIsNamedAndQuoted) {
  const std::pair<const char*, const char*> cases[] = {
      {"", "Command text"},
      {"SELECT ID FROM T; DELETE FROM T", "only one statement a call"},
      {"SELECT ID FROM T DELETE FROM T", "only one statement a call"},
      {"SELECT ID FROM T WHERE CODE = 'x", "unclosed quotation mark"},
      {"SELECT ID /* FROM T", "unclosed comment"},
      {"SELECT ID FROM NOWHERE", "Invalid object name 'NOWHERE'"},
      {"SELECT NOTHERE FROM T", "Invalid column name 'NOTHERE'"},
      {"SELECT X.ID FROM T", "Invalid column name 'X.ID'"},
      {"SELECT ID FROM T, T", "stands twice"},
      {"SELECT D_ID FROM D A, D B", "Ambiguous column name 'D_ID'"},
      {"SELECT SOUNDEX(CODE) FROM T", "'SOUNDEX' is not a function"},
      {"SELECT @x", "Must declare the scalar variable \"@x\""},
      {"MERGE T USING D ON 1 = 1", "expected a statement"},
      {"SELECT SUM(AMOUNT) OVER (PARTITION BY N) FROM T", "without OVER"},
      {"SELECT ID FROM T WHERE CODE LIKE 'a' ESCAPE 'b'", "without ESCAPE"},
      {"INSERT INTO T (ID) VALUES (1)", "identity column 'ID'"},
      {"UPDATE T SET ID = 1", "identity column 'ID'"},
      {"INSERT INTO D (D_ID, D_T) VALUES (1)", "number of values"},
      {"INSERT INTO D (D_ID, D_ID) VALUES (1, 2)", "written twice"},
      {"SELECT DAY + 1 FROM T", "DATEADD"},
      {"SELECT -CODE FROM T", "invalid for minus"},
      {"CREATE TABLE X (A DECIMAL(28,6))", "at most 18 digits"},
      {"CREATE TABLE X (A GEOGRAPHY)", "Unknown type 'GEOGRAPHY'"},
      {"SELECT ID FROM T ORDER BY 3", "ORDER BY position"},
      {"SELECT 1 UNION SELECT 1, 2", "same number of columns"},
  };
  for (const auto& [text, expected] : cases) EXPECT_THAT(failure(text), HasSubstr(expected)) << text;
}

TEST(Dialect, ResultColumnsHaveSqlServersTypes) {
  const auto types = [](std::string_view text) {
    std::string shown;
    for (const auto& column : translated(text).columns) {
      const auto& type = column.type;
      shown += column.name + ":" +
               (type.kind == TypeKind::Unknown                          ? "NULL"
                : type.kind == TypeKind::Decimal && type.precision > 18 ? "WIDE," + std::to_string(type.scale)
                                                                        : declaredType(type)) +
               " ";
    }
    return shown;
  };
  EXPECT_EQ(types("SELECT * FROM T"),
            "ID:DECIMAL(10,0) CODE:NCHAR(4) AMOUNT:DECIMAL(15,2) QTY:DECIMAL(14,3) DAY:INTDATETIME N:SMALLINT ");
  EXPECT_EQ(types("SELECT SUM(AMOUNT) AS S, NULL AS E, COUNT(*) AS C, AMOUNT + QTY AS P, 7 / 2 AS I FROM T GROUP BY N"),
            "S:WIDE,2 E:NULL C:INT P:DECIMAL(17,3) I:INT ");
  EXPECT_EQ(types("SELECT ISNULL(AMOUNT, 0) AS A, CASE WHEN N = 1 THEN AMOUNT ELSE QTY END AS B FROM T"),
            "A:DECIMAL(15,2) B:DECIMAL(16,3) ");
}

TEST(Dialect, AJoinedExpressionIsStagedWithItsKeyOrAnIndex) {
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
TEST(Dialect, RandomTextsNeverDoMoreThanFail) {
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

TEST(Dialect, DeepNestingIsRefused) {
  EXPECT_THAT(failure("SELECT " + std::string(100000, '(') + "1"), HasSubstr("too deeply"));
  EXPECT_THAT(failure("SELECT " + std::string(100000, '-') + "1"),
              testing::AnyOf(HasSubstr("too deeply"), HasSubstr("Incorrect syntax")));
  std::string nots = "SELECT ID FROM T WHERE ";
  for (int i = 0; i < 100000; ++i) nots += "NOT ";
  EXPECT_THAT(failure(nots + "N = 1"), HasSubstr("too deeply"));
  std::string sums = "SELECT 1";
  for (int i = 0; i < 100000; ++i) sums += "+1";
  EXPECT_THAT(failure(sums), HasSubstr("too many operators"));
}

}  // namespace
}  // namespace sqlite
