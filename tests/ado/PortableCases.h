#pragma once

#include "ado/OverAConnection.h"

/// The cases every provider must pass whatever dialect its database speaks: what Connection promises, in statements
/// that all of them know. A provider's test program includes this header once and instantiates PortableCases with its
/// own way to an open, empty database.
namespace provider_cases {

class PortableCases : public OverAConnection {
 protected:
  void SetUp() override {
    OverAConnection::SetUp();
    EXPECT_EQ(rows("CREATE TABLE NOTE (ID int NOT NULL, TESTO varchar(40) NULL, CONSTRAINT PK_NOTE PRIMARY KEY (ID))"),
              "closed");
    EXPECT_EQ(rows("INSERT INTO NOTE (ID, TESTO) VALUES (1, 'l''una; per tutte')"), "closed");
    EXPECT_EQ(rows("INSERT INTO NOTE (ID) VALUES (2)"), "closed");
  }
};

TEST_P(PortableCases, AQueryGivesItsRowsAndStandsOnTheFirst) {
  const auto set = run("SELECT TESTO, ID, ID, ID + 1 AS ID FROM NOTE ORDER BY 2");
  EXPECT_EQ(set->RecordCount(), 2);
  EXPECT_EQ((*set)["id#3"].Name(), "ID#3");
  EXPECT_EQ(shown(set), "l'una; per tutte|1|1|2; NULL|2|2|3");
  const auto none = run("SELECT ID FROM NOTE WHERE ID > 2");
  EXPECT_EQ(none->State(), ado::adStateOpen);
  EXPECT_TRUE(none->Bof() && none->Eof());
  EXPECT_EQ(rows("DELETE FROM NOTE WHERE ID > 2"), "closed");
}

TEST_P(PortableCases, VisitsRowsWhileOtherQueriesRun) {
  constexpr const char* kText = "SELECT ID, TESTO FROM NOTE ORDER BY ID";
  // What a visit throws ends it, and nothing else.
  EXPECT_THROW(
      connection->ForEachRow(kText, [](const ado::Recordset&) { return [] { throw values::Errore("full"); }; }),
      values::Errore);
  std::string seen;
  connection->ForEachRow(kText, [&](const ado::Recordset& row) {
    return [&, &id = row["ID"], &text = row["TESTO"]] {
      run("SELECT MAX(ID) + 1 FROM NOTE");
      EXPECT_EQ(run(kText)->RecordCount(), 2);
      seen += values::toPlainText(id.Value()) + values::toPlainText(text.Value()) + "; ";
    };
  });
  // Only what is looked up before the first row is read.
  for (const char* name : {"TESTO", "ID", "TESTO"})
    connection->ForEachRow(kText, [&](const ado::Recordset& row) {
      return [&, name, &field = row[name]] {
        seen += values::toPlainText(field.Value()) +
                (row.Fields().Find(name == std::string("ID") ? "TESTO" : "ID") ? "?" : "; ");
      };
    });
  EXPECT_EQ(seen, "1l'una; per tutte; 2; l'una; per tutte; ; 1; 2; l'una; per tutte; ; ");
}

TEST_P(PortableCases, RefusesASecondStatement) {
  for (const char* text : {"SELECT 1; DELETE FROM NOTE", "DELETE FROM NOTE WHERE TESTO = '' DELETE FROM NOTE",
                           "UPDATE NOTE SET TESTO = '' WHERE 1 = 0; DROP TABLE NOTE --'"}) {
    EXPECT_THROW(run(text), values::Errore) << text;
  }
  EXPECT_EQ(outcome(" -- nothing"), "Command text was not set for the command object");
  EXPECT_EQ(rows("SELECT COUNT(*) AS N FROM NOTE"), "2");
}

TEST_P(PortableCases, TransactionsCommitRollBackAndRefuseMisuse) {
  connection->BeginTrans();
  run("DELETE FROM NOTE");
  EXPECT_THROW(connection->BeginTrans(), values::Errore);
  connection->RollbackTrans();
  EXPECT_EQ(rows("SELECT COUNT(*) AS N FROM NOTE"), "2");
  EXPECT_THROW(connection->RollbackTrans(), values::Errore);
  EXPECT_THROW(connection->CommitTrans(), values::Errore);

  // A statement that fails takes nothing else with it.
  connection->BeginTrans();
  run("INSERT INTO NOTE (ID) VALUES (3)");
  EXPECT_THROW(run("INSERT INTO NOTE (ID) VALUES (3)"), values::Errore);
  EXPECT_THROW(run("SELECT NIENTE FROM NOTE"), values::Errore);
  connection->CommitTrans();
  EXPECT_EQ(rows("SELECT ID FROM NOTE WHERE ID > 1 ORDER BY ID"), "2; 3");
}

TEST_P(PortableCases, RefusesWorkWhenClosed) {
  connection->BeginTrans();
  connection->Close();
  EXPECT_EQ(connection->State(), ado::adStateClosed);
  EXPECT_THROW(run("SELECT 1 AS X"), values::Errore);
  EXPECT_THROW(connection->BeginTrans(), values::Errore);
  EXPECT_THROW(connection->RollbackTrans(), values::Errore);
  EXPECT_THROW(connection->Close(), values::Errore);
}

}  // namespace provider_cases
