#pragma once

#include "ado/PortableCases.h"
#include "support/Fields.h"
#include "values/Text.h"

/// The cases every provider must pass that answers as SQL Server does, whichever database stands behind it.
/// A provider's test program includes this header once and instantiates ProviderCases and PortableCases.
namespace provider_cases {

using testing_support::described;

class ProviderCases : public OverAConnection {
 protected:
  void SetUp() override {
    OverAConnection::SetUp();
    run("CREATE TABLE SCHEDE (ID decimal(10,0) IDENTITY(1,1) NOT NULL, CODICE char(4) NOT NULL, NOME varchar(10) NULL,"
        " IMPORTO decimal(15,2) NULL, QTA decimal(14,3) NULL, TIPO smallint NULL, FATTA datetime NULL,"
        " CONSTRAINT PK_SCHEDE PRIMARY KEY (ID))");
    run("CREATE TABLE CODICI (CODICE char(4) NOT NULL, DESCR nvarchar(20) NULL,"
        " CONSTRAINT PK_CODICI PRIMARY KEY (CODICE))");
  }

  /// Lines "statement => the rows shown".
  void check(const std::vector<std::string>& cases) {
    for (const auto& [statement, expected] : inOut(cases)) EXPECT_EQ(outcome(statement), expected) << statement;
  }
  /// Lines "statement => the start of the error text".
  void checkRefused(const std::vector<std::string>& cases) {
    for (const auto& [statement, expected] : inOut(cases))
      EXPECT_EQ(outcome(statement).substr(0, expected.size()), expected) << statement;
  }
  void fill() {
    for (const std::string row :
         {"'A1', 'Alfa', 10.50, 1.125, 0, '20110131'", "'b2', 'beta', -3.25, NULL, 1, '20110228 13:05:09'",
          "'C3', NULL, NULL, 2.000, 1, NULL"})
      run("INSERT INTO SCHEDE (CODICE, NOME, IMPORTO, QTA, TIPO, FATTA) VALUES (" + row + ")");
  }
};

TEST_P(ProviderCases, ReadsWhatItWroteInTheFieldsTypes) {
  fill();
  const auto set = run("SELECT * FROM SCHEDE WITH (NOLOCK) ORDER BY ID");
  EXPECT_EQ(described(*set),
            "ID decimal(10,0)!, CODICE char(4)!, NOME varchar(10), IMPORTO decimal(15,2), QTA decimal(14,3),"
            " TIPO smallint, FATTA datetime");
  const values::Kind kinds[] = {values::Kind::Decimal, values::Kind::String,  values::Kind::String,
                                values::Kind::Decimal, values::Kind::Decimal, values::Kind::Int16,
                                values::Kind::Date};
  for (std::size_t i = 0; i < std::size(kinds); ++i) EXPECT_EQ(set->Fields().Item(i).Value().kind(), kinds[i]) << i;
  EXPECT_EQ(set->RecordCount(), 3);
  EXPECT_EQ(shown(set),
            "1|A1  |Alfa|10.50|1.125|0|31/01/2011; 2|b2  |beta|-3.25|NULL|1|28/02/2011 13:05:09; "
            "3|C3  |NULL|NULL|2.000|1|NULL");
}

TEST_P(ProviderCases, SortsRowsByEveryKeyNullsFirstAndKeepsThemWhole) {
  std::mt19937 random(7);
  using Row = std::tuple<int, std::string, int>;  // kind, name in capitals, identity
  std::vector<Row> expected;
  for (int id = 1; id <= 200; ++id) {
    const int kind = static_cast<int>(random() % 4);
    const std::string name(1, "aBcD"[random() % 4]);
    run("INSERT INTO SCHEDE (CODICE, NOME, TIPO) VALUES ('" + std::to_string(id) + "', '" + name + "', " +
        (kind == 0 ? "NULL" : std::to_string(kind)) + ")");
    expected.emplace_back(kind, std::string(1, static_cast<char>(std::toupper(name[0]))), id);
  }
  std::ranges::sort(expected, [](const Row& a, const Row& b) {
    const auto& [kindA, nameA, idA] = a;
    const auto& [kindB, nameB, idB] = b;
    return std::tie(kindA, nameB, idA) < std::tie(kindB, nameA, idB);
  });
  const auto set = run("SELECT ID, CODICE, NOME, TIPO FROM SCHEDE ORDER BY TIPO, NOME DESC, ID");
  for (const auto& [kind, name, id] : expected) {
    const auto& fields = set->Fields();
    EXPECT_EQ(values::toInt32(fields.Item("ID").Value()), id);
    EXPECT_EQ(values::trim(values::toText(fields.Item("CODICE").Value())), std::to_string(id));
    EXPECT_EQ(values::compareText(values::toText(fields.Item("NOME").Value()), name), 0);
    EXPECT_EQ(values::toInt32(values::nvl(fields.Item("TIPO").Value(), 0)), kind);
    set->MoveNext();
  }
  EXPECT_TRUE(set->Eof());
}

TEST_P(ProviderCases, ComparesAsSqlServerDoes) {
  fill();
  check(linesOf("ado/cases/compares.txt"));
}

TEST_P(ProviderCases, ComputesAsSqlServerDoes) {
  fill();
  check(linesOf("ado/cases/computes.txt"));
}

TEST_P(ProviderCases, WritesOnlyWhatFits) {
  fill();
  check(linesOf("ado/cases/writes.txt"));
  checkRefused(linesOf("ado/cases/refuses.txt"));
  EXPECT_EQ(outcome("").substr(0, 12), "Command text");
  EXPECT_EQ(rows("SELECT IMPORTO, NOME FROM SCHEDE WHERE ID = 1"), "-9999999999999.99|dieci10   ");
}

TEST_P(ProviderCases, ChangesTablesAsSqlServerDoes) { checkRefused(linesOf("ado/cases/schemas.txt")); }

TEST_P(ProviderCases, WritesManyRowsAsTheirTextsWould) {
  using values::Decimal;
  const std::vector<std::string_view> columns{"codice", "NOME", "IMPORTO", "QTA", "TIPO", "FATTA"};
  const std::vector<std::vector<values::Variant>> written{
      {"A1", "a\tb\nc\r\\N'", Decimal::FromScaled(1050, 2), Decimal::FromScaled(123456, 5), 0,
       values::Date::FromYmd(2011, 1, 31)},
      {"b2", {}, "-3.255", 5, true, "20110228 13:05:09"},
      {std::string("C3  "), "\xC3\xA8", 1.5, values::Variant::Null(), std::int16_t{-7}, {}}};
  connection->BeginTrans();
  for (const auto& insert : {connection->bulkInsert("schede", columns).release(),
                             ado::insertByText(*connection, "SCHEDE", columns).release()}) {
    const std::unique_ptr<ado::BulkInsert> owned(insert);
    for (const auto& row : written) owned->add(row);
    owned->finish();
  }
  connection->CommitTrans();
  const std::string read = "SELECT CODICE, NOME, IMPORTO, QTA, TIPO, FATTA FROM SCHEDE WHERE ID ";
  const std::string expected =
      "A1  |a\tb\nc\r\\N'|10.50|1.235|0|31/01/2011; b2  |NULL|-3.26|5.000|1|28/02/2011 13:05:09; "
      "C3  |\xC3\xA8|1.50|NULL|-7|NULL";
  EXPECT_EQ(rows(read + "<= 3 ORDER BY ID"), expected);
  EXPECT_EQ(rows(read + "> 3 ORDER BY ID"), expected);
}

TEST_P(ProviderCases, RefusesARowOfManyInTheWordsOfAText) {
  run("INSERT INTO CODICI (CODICE) VALUES ('due')");
  const auto refusal = [&](std::unique_ptr<ado::BulkInsert> insert, const std::vector<values::Variant>& row) {
    connection->BeginTrans();
    std::string text;
    try {
      insert->add({"uno", "prima"});
      insert->add(row);
      insert->finish();
    } catch (const values::Errore& error) {
      text = error.what();
    }
    connection->RollbackTrans();
    return text;
  };
  const std::vector<std::string_view> columns{"CODICE", "DESCR"};
  for (const std::vector<values::Variant>& row :
       {std::vector<values::Variant>{"lungo", {}}, {"tre", "x23456789012345678901"}, {{}, "x"}, {"due", "x"}}) {
    const auto text = refusal(connection->bulkInsert("CODICI", columns), row);
    EXPECT_NE(text, "");
    EXPECT_EQ(text, refusal(ado::insertByText(*connection, "CODICI", columns), row));
  }
  EXPECT_EQ(rows("SELECT CODICE FROM CODICI"), "due ");
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
