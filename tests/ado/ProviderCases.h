#pragma once

#include "ado/PortableCases.h"

/// The cases every provider must pass that answers as SQL Server does, whichever database stands behind it.
/// A provider's test program includes this header once and instantiates ProviderCases and PortableCases.
namespace provider_cases {

struct Row {
  std::string statement;
  std::string expected;  ///< the rows shown, or the start of the error text
};

class ProviderCases : public OverAConnection {
 protected:
  void SetUp() override {
    OverAConnection::SetUp();
    run("CREATE TABLE SCHEDE ("
        " ID decimal(10,0) IDENTITY(1,1) NOT NULL,"
        " CODICE char(4) NOT NULL,"
        " NOME varchar(10) NULL,"
        " IMPORTO decimal(15,2) NULL,"
        " QTA decimal(14,3) NULL,"
        " TIPO smallint NULL,"
        " FATTA datetime NULL,"
        " CONSTRAINT PK_SCHEDE PRIMARY KEY (ID))");
    run("CREATE TABLE CODICI (CODICE char(4) NOT NULL, DESCR nvarchar(20) NULL, CONSTRAINT PK_CODICI PRIMARY KEY "
        "(CODICE))");
  }

  void check(const std::vector<Row>& cases) {
    for (const auto& [statement, expected] : cases) EXPECT_EQ(outcome(statement), expected) << statement;
  }
  void checkRefused(const std::vector<Row>& cases) {
    for (const auto& [statement, expected] : cases) {
      EXPECT_EQ(outcome(statement).substr(0, expected.size()), expected) << statement;
    }
  }
  void fill() {
    run("INSERT INTO SCHEDE (CODICE, NOME, IMPORTO, QTA, TIPO, FATTA) VALUES ('A1', 'Alfa', 10.50, 1.125, 0, "
        "'20110131')");
    run("INSERT INTO SCHEDE (CODICE, NOME, IMPORTO, QTA, TIPO, FATTA) VALUES ('b2', 'beta', -3.25, NULL, 1, '20110228 "
        "13:05:09')");
    run("INSERT INTO SCHEDE (CODICE, NOME, IMPORTO, QTA, TIPO, FATTA) VALUES ('C3', NULL, NULL, 2.000, 1, NULL)");
  }
};

TEST_P(ProviderCases, ReadsWhatItWroteInTheFieldsTypes) {
  fill();
  const auto set = run("SELECT * FROM SCHEDE WITH (NOLOCK) ORDER BY ID");
  struct Expected {
    const char* name;
    ado::DataTypeEnum type;
    int size, precision, scale;
    bool nullable;
    values::Kind kind;
  };
  const std::vector<Expected> fields = {{"ID", ado::adDecimal, 0, 10, 0, false, values::Kind::Decimal},
                                        {"CODICE", ado::adChar, 4, 0, 0, false, values::Kind::String},
                                        {"NOME", ado::adVarChar, 10, 0, 0, true, values::Kind::String},
                                        {"IMPORTO", ado::adDecimal, 0, 15, 2, true, values::Kind::Decimal},
                                        {"QTA", ado::adDecimal, 0, 14, 3, true, values::Kind::Decimal},
                                        {"TIPO", ado::adSmallInt, 0, 0, 0, true, values::Kind::Int16},
                                        {"FATTA", ado::adDBTimeStamp, 0, 0, 0, true, values::Kind::Date}};
  ASSERT_EQ(set->Fields().Count(), fields.size());
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const auto& field = set->Fields().Item(i);
    EXPECT_EQ(field.Name(), fields[i].name);
    EXPECT_EQ(field.Type(), fields[i].type) << field.Name();
    EXPECT_EQ(field.Value().kind(), fields[i].kind) << field.Name();
    EXPECT_EQ((field.Attributes() & ado::adFldIsNullable) != 0 && field.Attributes() > 0, fields[i].nullable)
        << field.Name();
    if (fields[i].size > 0) {
      EXPECT_EQ(field.DefinedSize(), fields[i].size) << field.Name();
    }
    if (field.Type() == ado::adDecimal) {
      EXPECT_EQ(field.Precision(), fields[i].precision) << field.Name();
      EXPECT_EQ(field.NumericScale(), fields[i].scale) << field.Name();
    }
  }
  EXPECT_EQ(set->RecordCount(), 3);
  EXPECT_EQ(shown(set),
            "1|A1  |Alfa|10.50|1.125|0|31/01/2011; 2|b2  |beta|-3.25|NULL|1|28/02/2011 13:05:09; "
            "3|C3  |NULL|NULL|2.000|1|NULL");
}

TEST_P(ProviderCases, ComparesAsSqlServerDoes) {
  fill();
  check({{"SELECT ID FROM SCHEDE WHERE CODICE = 'a1'", "1"},
         {"SELECT ID FROM SCHEDE WHERE NOME = 'BETA   '", "2"},
         {"SELECT ID FROM SCHEDE WHERE NOME LIKE 'AL%'", "1"},
         {"SELECT ID FROM SCHEDE WHERE NOME LIKE '[a-b]_t%'", "2"},
         {"SELECT ID FROM SCHEDE WHERE NOME LIKE '[^a]%'", "2"},
         {"SELECT ID FROM SCHEDE WHERE CODICE >= ' ' AND CODICE <= 'B' ORDER BY CODICE", "1"},
         {"SELECT ID FROM SCHEDE WHERE NOME NOT IN ('alfa', 'gamma')", "2"},
         {"SELECT ID FROM SCHEDE WHERE CODICE NOT IN (SELECT NOME FROM SCHEDE)", ""},
         {"SELECT ID FROM SCHEDE WHERE IMPORTO = 10.5", "1"},
         {"SELECT ID FROM SCHEDE WHERE IMPORTO = 10.501", ""},
         {"SELECT ID FROM SCHEDE WHERE IMPORTO > -3.255 AND IMPORTO < 0", "2"},
         {"SELECT ID FROM SCHEDE WHERE IMPORTO = '10.50'", "1"},
         {"SELECT ID FROM SCHEDE WHERE IMPORTO <> 10.50", "2"},
         {"SELECT ID FROM SCHEDE WHERE FATTA = '20110131'", "1"},
         {"SELECT ID FROM SCHEDE WHERE FATTA > '20110228' ORDER BY ID", "2"},
         {"SELECT ID FROM SCHEDE WHERE FATTA BETWEEN '20110101' AND '20110228 13:05:09' ORDER BY ID", "1; 2"},
         {"SELECT ID FROM SCHEDE WHERE NOT IMPORTO IS NULL ORDER BY IMPORTO", "2; 1"},
         {"SELECT NOME FROM SCHEDE ORDER BY NOME DESC", "beta; Alfa; NULL"}});
}

TEST_P(ProviderCases, ComputesAsSqlServerDoes) {
  fill();
  check({{"SELECT 7 / 2 AS X", "3"},
         {"SELECT ID FROM SCHEDE WHERE TIPO / 2 = 0 ORDER BY ID", "1; 2; 3"},
         {"SELECT NOME + ' - ' + CODICE AS X FROM SCHEDE WHERE ID = 1", "Alfa - A1  "},
         {"SELECT NOME + 'x' AS X FROM SCHEDE WHERE ID = 3", "NULL"},
         {"SELECT ISNULL(NOME, '?') AS X FROM SCHEDE WHERE ID = 3", "?"},
         {"SELECT SUM(IMPORTO) AS X, COUNT(*) AS N FROM SCHEDE", "7.25|3"},
         {"SELECT TIPO, SUM(IMPORTO) AS X, MAX(QTA) AS Q FROM SCHEDE GROUP BY TIPO ORDER BY TIPO",
          "0|10.50|1.125; 1|-3.25|2.000"},
         {"SELECT IMPORTO + 1 AS X FROM SCHEDE WHERE ID = 1", "11.50"},
         {"SELECT IMPORTO + QTA AS X FROM SCHEDE WHERE ID = 1", "11.625"},
         {"SELECT -IMPORTO AS X FROM SCHEDE WHERE ID = 2", "3.25"},
         {"SELECT CASE WHEN TIPO = 0 THEN 'zero' ELSE 'altro' END AS X FROM SCHEDE ORDER BY ID", "zero; altro; altro"},
         {"SELECT TOP 1 ID FROM SCHEDE ORDER BY ID DESC", "3"},
         {";WITH N AS (SELECT 1 AS P UNION ALL SELECT P + 1 FROM N WHERE P < 4) SELECT P FROM N ORDER BY P",
          "1; 2; 3; 4"},
         {"SELECT DISTINCT TIPO FROM SCHEDE ORDER BY TIPO", "0; 1"},
         // A text type without a length holds 30 characters in a conversion.
         {"SELECT CONVERT(NVARCHAR, 12345678) AS X", "12345678"},
         {"SELECT CAST('abcdefghijklmnopqrstuvwxyzabcdefgh' AS VARCHAR) AS X", "abcdefghijklmnopqrstuvwxyzabcd"}});
}

TEST_P(ProviderCases, WritesOnlyWhatFits) {
  fill();
  check({{"UPDATE SCHEDE SET IMPORTO = 1.005 WHERE ID = 1", "closed"},
         {"SELECT IMPORTO FROM SCHEDE WHERE ID = 1", "1.01"},
         {"UPDATE SCHEDE SET IMPORTO = -9999999999999.99, QTA = 99999999999.999 WHERE ID = 1", "closed"},
         {"SELECT IMPORTO, QTA FROM SCHEDE WHERE ID = 1", "-9999999999999.99|99999999999.999"},
         {"UPDATE SCHEDE SET NOME = 'dieci10   ' WHERE ID = 1", "closed"}});
  checkRefused(
      {{"UPDATE SCHEDE SET IMPORTO = 10000000000000.00 WHERE ID = 1", "Arithmetic overflow error"},
       {"UPDATE SCHEDE SET TIPO = 40000 WHERE ID = 1", "Arithmetic overflow error"},
       {"UPDATE SCHEDE SET NOME = 'undici caratteri' WHERE ID = 1", "String or binary data would be truncated"},
       {"UPDATE SCHEDE SET FATTA = '20110230' WHERE ID = 1", "The conversion"},
       {"UPDATE SCHEDE SET FATTA = 'ieri' WHERE ID = 1", "Conversion failed when converting date"},
       {"UPDATE SCHEDE SET IMPORTO = 'molto' WHERE ID = 1", "Error converting data type varchar to numeric"},
       {"INSERT INTO SCHEDE (NOME) VALUES ('senza')", "Cannot insert the value NULL into column 'CODICE'"},
       {"SELECT NIENTE FROM SCHEDE", "Invalid column name"},
       {"SELECT * FROM NIENTE", "Invalid object name"},
       {"", "Command text"}});
  EXPECT_EQ(rows("SELECT IMPORTO, NOME FROM SCHEDE WHERE ID = 1"), "-9999999999999.99|dieci10   ");
}

TEST_P(ProviderCases, KeepsConstraintsAndSaysWhichOneBroke) {
  run("INSERT INTO CODICI (CODICE, DESCR) VALUES ('X', N'uno')");
  EXPECT_NE(outcome("INSERT INTO CODICI (CODICE, DESCR) VALUES ('x   ', N'due')").find("CODICI"), std::string::npos);
  EXPECT_EQ(rows("SELECT DESCR FROM CODICI"), "uno");
}

TEST_P(ProviderCases, TellsTheLastIdentityOfThisConnection) {
  EXPECT_EQ(rows("SELECT @@IDENTITY"), "NULL");
  fill();
  EXPECT_EQ(rows("SELECT @@IDENTITY"), "3");
  run("UPDATE SCHEDE SET TIPO = 5");
  run("DELETE FROM SCHEDE WHERE ID = 3");
  run("IF NOT EXISTS (SELECT TOP 1 1 FROM SCHEDE WHERE ID = 1) BEGIN INSERT INTO SCHEDE (CODICE) VALUES ('Z') END");
  EXPECT_EQ(rows("SELECT @@IDENTITY"), "3");
  run("INSERT INTO SCHEDE (CODICE) VALUES ('D4')");
  EXPECT_EQ(rows("SELECT @@IDENTITY"), "4");
}

TEST_P(ProviderCases, InsertsOnceWhenAskedWhetherTheRowExists) {
  const std::string text =
      " IF NOT EXISTS \r\n ( SELECT TOP 1 1 FROM CODICI WHERE CODICE = 'Q' ) \r\n BEGIN \r\n"
      " INSERT INTO CODICI ( CODICE, DESCR ) VALUES ( 'Q', 'una' ) \r\n END \r\n";
  run(text);
  run(text);
  EXPECT_EQ(rows("SELECT CODICE, DESCR FROM CODICI"), "Q   |una");
}

}  // namespace provider_cases
