#include "odbc/SingleStatement.h"
#include "support/Test.h"

namespace odbc_tests {
namespace {

TEST(SingleStatement, LetsOneThrough) {
  for (const char* text :
       {"SELECT 1", ";WITH A AS (SELECT 1 AS X UNION ALL SELECT X + 1 FROM A WHERE X < 3) SELECT * FROM A ;",
        "INSERT INTO A (X) SELECT X FROM B UNION SELECT X FROM C",
        ";WITH A AS (SELECT 1 AS X) INSERT INTO B (X) SELECT X FROM A", "(SELECT X FROM A) UNION ALL (SELECT X FROM B)",
        "IF NOT EXISTS (SELECT TOP 1 1 FROM A) BEGIN INSERT INTO A (X) VALUES (1) END",
        "IF (SELECT COUNT(*) FROM A) = 0 AND (SELECT COUNT(*) FROM B) = 0 DELETE FROM C",
        "UPDATE A SET X = CASE WHEN X IS NULL THEN 0 ELSE X END WHERE Y = 'a; DROP TABLE A'",
        "MERGE A USING B ON A.X = B.X WHEN MATCHED THEN UPDATE SET Y = 1 WHEN NOT MATCHED THEN INSERT (X) VALUES (1);",
        "CREATE TABLE A (X int, CONSTRAINT F FOREIGN KEY (X) REFERENCES B (X) ON DELETE CASCADE)",
        "ALTER TABLE A ADD CONSTRAINT F FOREIGN KEY (X) REFERENCES B (X) ON DELETE CASCADE",
        "SELECT X -- ; DELETE FROM A\r\n FROM A /* ; DROP /* nested */ TABLE A */",
        "SELECT [DELETE], [a]] DROP TABLE A], \"x\"\" EXEC P\" FROM [SELECT].[UPDATE]", "SELECT '''; DROP TABLE A --'",
        "SELECT X & ~1 | 2 ^ Y FROM A", "SELECT N'perché' AS [città]", "SELECT X AS UPDATED, CREATED FROM EXECUTION"}) {
    EXPECT_NO_THROW(odbc::requireSingleStatement(text)) << text;
  }
}

TEST(SingleStatement, RefusesTwoAndSaysWhereTheSecondBegins) {
  struct Stacked {
    const char* text;
    const char* second;
  };
  for (const auto& [text, second] : {
           Stacked{"SELECT 1; SELECT 2", "SELECT"},
           {"SELECT 1;;x", "x"},
           {"SELECT 1; 'x'", "'x'"},
           {"select 1 delete from A", "delete"},
           {"DELETE FROM A WHERE X = '' DROP TABLE A --'", "DROP"},
           {"DELETE FROM A WHERE X = 1DROP TABLE A", "DROP"},
           {"DELETE FROM A WHERE X = 1.5e-3EXEC P", "EXEC"},
           {"DELETE FROM A WHERE X = 0x1FUPDATE A SET X = 1", "UPDATE"},
           {"DELETE FROM A WHERE X = $1UPDATE A SET X = 1", "UPDATE"},
           {"DELETE FROM A WHERE X = 'a'EXEC P", "EXEC"},
           {"DELETE FROM A WHERE X = ''\xC2\xA0"
            "DROP\xE2\x80\x83TABLE A",
            "DROP"},
           {"DELETE FROM A WHERE X = ''/**/DROP/**/TABLE A", "DROP"},
           {"DELETE FROM [A]DROP TABLE [B]", "DROP"},
           {"UPDATE A SET X = 1 WHERE Y = 2 UPDATE A SET X = 2", "UPDATE"},
           {"SELECT 1 SET NOCOUNT ON", "SET"},
           {"UPDATE A SET X = 1 SET NOCOUNT ON", "SET"},
           {"SET NOCOUNT ON SET ROWCOUNT 1", "SET"},
           {"INSERT INTO A (X) VALUES (1) SELECT 2", "SELECT"},
           {"INSERT INTO A (X) SELECT 1 SELECT 2", "SELECT"},
           {"(SELECT 1) DELETE FROM A", "DELETE"},
           {";WITH A AS (SELECT 1 AS X) (SELECT X FROM A) DELETE FROM B", "DELETE"},
           {"BEGIN TRAN DELETE FROM A", "DELETE"},
           {"SELECT 1 BEGIN TRAN", "BEGIN"},
           {"IF NOT EXISTS (SELECT 1 FROM A) BEGIN INSERT INTO A (X) VALUES (1) DELETE FROM B END", "DELETE"},
           {"IF NOT EXISTS (SELECT 1 FROM A) INSERT INTO A (X) VALUES (1) ELSE DELETE FROM A", "DELETE"},
       }) {
    std::string message;
    try {
      odbc::requireSingleStatement(text);
    } catch (const values::Errore& error) {
      message = error.what();
    }
    EXPECT_EQ(message,
              "Only one statement can be executed at a time: a second one begins at '" + std::string(second) + "'")
        << text;
  }
}

}  // namespace
}  // namespace odbc_tests
