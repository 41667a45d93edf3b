#include "tsql/Resolver.h"
#include "tsql/SmallCatalog.h"

namespace tsql_tests {
namespace {

using testing::HasSubstr;

tsql::Statement resolved(std::string_view text) {
  static const SmallCatalog catalog;
  const auto scan = tsql::scan(text);
  auto statement = tsql::Parser(scan).statement();
  tsql::Resolver(scan, catalog).resolve(statement);
  return statement;
}

std::string failure(std::string_view text) {
  return errorOf([&] { resolved(text); });
}

TEST(Lexer, TextsShareAKeyWhenOnlyLiteralsDiffer) {
  const auto key = [](std::string_view text) { return tsql::scan(text).key; };
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

TEST(Resolver, WhatItDoesNotKnowIsNamedAndQuoted) {
  const std::pair<const char*, const char*> cases[] = {
      {"SELECT ID FROM T; DELETE FROM T", "only one statement a call"},
      {"SELECT ID FROM T WHERE CODE = 'x", "unclosed quotation mark"},
      {"SELECT ID /* FROM T", "unclosed comment"},
      {"SELECT X.ID FROM T", "Invalid column name 'X.ID'"},
      {"SELECT ID FROM T, T", "stands twice"},
      {"SELECT D_ID FROM D A, D B", "Ambiguous column name 'D_ID'"},
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
      {"CREATE TABLE X (A GEOGRAPHY)", "Unknown type 'GEOGRAPHY'"},
      {"SELECT ID FROM T ORDER BY 3", "ORDER BY position"},
      {"SELECT 1 UNION SELECT 1, 2", "same number of columns"},
      {"WITH P AS (SELECT N FROM P) SELECT N FROM P", "'P' reads itself"},
  };
  for (const auto& [text, expected] : cases) EXPECT_THAT(failure(text), HasSubstr(expected)) << text;
}

TEST(Resolver, ResultColumnsHaveSqlServersTypes) {
  const auto types = [](std::string_view text) {
    const auto statement = resolved(text);
    std::string shown;
    for (const auto& column : std::get<tsql::Query>(statement).select->columns)
      shown += (shown.empty() ? "" : " ") + column.name + ":" + typeName(column.type);
    return shown;
  };
  const std::pair<const char*, const char*> cases[] = {
      {"SELECT * FROM T",
       "ID:DECIMAL(10,0) CODE:NCHAR(4) AMOUNT:DECIMAL(15,2) QTY:DECIMAL(14,3) DAY:DATETIME N:SMALLINT"},
      {"SELECT SUM(AMOUNT) AS S, NULL AS E, COUNT(*) AS C, AVG(QTY) AS M FROM T",
       "S:DECIMAL(38,2) E:NULL C:INT M:DECIMAL(38,6)"},
      {"SELECT AMOUNT + QTY AS P, AMOUNT * QTY AS M, AMOUNT / QTY AS D, AMOUNT / 100 AS H, 7 / 2 AS I, N * 1e0 AS F "
       "FROM T",
       "P:DECIMAL(17,3) M:DECIMAL(30,5) D:DECIMAL(38,17) H:DECIMAL(38,6) I:INT F:FLOAT"},
      {"SELECT CODE + '-' AS L, CODE + CODE AS C, CODE + N AS R FROM T", "L:NVARCHAR(MAX) C:NVARCHAR(8) R:INT"},
      {"SELECT ISNULL(AMOUNT, 0) AS A, CASE WHEN N = 1 THEN AMOUNT ELSE QTY END AS B, COALESCE(N, QTY) AS C FROM T",
       "A:DECIMAL(15,2) B:DECIMAL(16,3) C:DECIMAL(14,3)"},
      {"SELECT N AS A FROM T UNION ALL SELECT AMOUNT FROM T", "A:DECIMAL(15,2)"},
      {"WITH A AS (SELECT 1 AS N UNION ALL SELECT 2.5) SELECT N FROM A", "N:DECIMAL(18,1)"},
      {"WITH A(K) AS (SELECT ID FROM T) SELECT K FROM A", "K:DECIMAL(10,0)"},
      // What reads itself keeps the types of its first query.
      {"WITH P AS (SELECT 1 AS N UNION ALL SELECT N + 1.5 FROM P WHERE N < 9) SELECT N FROM P", "N:INT"},
      {"SELECT (SELECT MAX(D_VALUE) FROM D WHERE D_T = ID) AS V, S.K FROM T, (SELECT D_ID AS K FROM D) S",
       "V:DECIMAL(15,2) K:DECIMAL(10,0)"},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(types(text), expected) << text;
}

TEST(Parser, DeepNestingIsRefused) {
  EXPECT_THAT(failure("SELECT " + std::string(100000, '(') + "1"), HasSubstr("too deeply"));
  std::string nots = "SELECT ID FROM T WHERE ";
  for (int i = 0; i < 100000; ++i) nots += "NOT ";
  EXPECT_THAT(failure(nots + "N = 1"), HasSubstr("too deeply"));
  std::string sums = "SELECT 1";
  for (int i = 0; i < 100000; ++i) sums += "+1";
  EXPECT_THAT(failure(sums), HasSubstr("too many operators"));
}

}  // namespace
}  // namespace tsql_tests
