#include <sql.h>
#include <sqlext.h>

#include "ado/OverAConnection.h"
#include "odbc/Provider.h"
#include "support/Fields.h"

/// What SQL Server's driver may answer, told by a driver that follows a script (driver/ScriptedDriver.cpp).
namespace {

using provider_cases::shown, testing_support::described, values::Kind;

const std::string kDriver = "Driver={" BUKORVAL_SCRIPTED_DRIVER "}";

class Scripted : public testing::Test {
 protected:
  void SetUp() override {
    odbc::registerOdbc();
    connection = opened(";");
  }
  static ado::ConnectionPtr opened(const std::string& words) {
    auto fresh = ado::createConnection();
    fresh->ConnectionString = "Provider=ODBC;" + kDriver + words;
    fresh->Open();
    return fresh;
  }
  std::string outcome(std::string_view text) { return provider_cases::outcomeOf(*connection, text); }

  ado::ConnectionPtr connection = ado::createConnection();
};

TEST_F(Scripted, TheDriverGetsItsOwnStringAndTheUserWhateverSignsThePasswordHas) {
  const auto opened = [&](const std::string& text, std::string_view user, std::string_view password) {
    connection = ado::createConnection();
    connection->ConnectionString = text;
    connection->Open(user, password);
    return outcome("SELECT SETTINGS");
  };
  EXPECT_EQ(opened(" provider = odbc;" + kDriver + ";PWD={a;;b}};Provider=x};", "", ""),
            kDriver + ";PWD={a;;b}};Provider=x};|auto|2|noscan");
  EXPECT_EQ(opened(kDriver, "però", "p};w="), kDriver + ";UID={però};PWD={p}};w=}|auto|2|noscan");
  EXPECT_EQ(errorOf([&] { opened(kDriver, "nobody", ""); }), "Login failed for user 'nobody'");
  EXPECT_EQ(connection->State(), ado::adStateClosed);
  EXPECT_THROW(opened(kDriver + ";X=" + std::string(40'000, 'x'), "", ""), values::Errore);
}

TEST_F(Scripted, TheTextGoesUnchanged) {
  for (const char* text :
       {"SELECT {d '2011-01-31'}, N'però €' -- \xF0\x9F\x92\xB6\r\n", "  SELECT TOP 1 X FROM [A] WITH (NOLOCK);"}) {
    EXPECT_EQ(outcome(text), text);
  }
  EXPECT_EQ(outcome("SELECT '\xE8'"), "The text is not valid UTF-8 from its byte 9");
}

TEST_F(Scripted, ADriverOfAnOldProtocolIsAskedForALaterOneUnlessTheStringSaysWhich) {
  connection = opened(";Old=1");
  EXPECT_EQ(outcome("SELECT SETTINGS"), kDriver + ";Old=1;TDS_Version=7.4|auto|2|noscan");
  EXPECT_EQ(errorOf([] { opened(";TDS_Version=7.1"); }),
            "The driver speaks version 7.1 of the server's protocol: TDS_Version=7.2 or later is needed");
  EXPECT_EQ(outcome("SELECT CONNECTIONS"), "1");
}

TEST_F(Scripted, ReadsEveryTypeAsTheFieldSays) {
  const auto set = connection->Execute("SELECT TYPES");
  EXPECT_EQ(described(*set),
            "A smallint!, B smallint, C bigint, D bit, E datetime, F float, G char(36), perché nvarchar(20),"
            " I nvarchar(1073741823),  nchar(4)");
  const Kind kinds[] = {Kind::Int16,  Kind::Int16,  Kind::Decimal, Kind::Boolean, Kind::Date,
                        Kind::Double, Kind::String, Kind::String,  Kind::String,  Kind::String};
  for (std::size_t i = 0; i < std::size(kinds); ++i) EXPECT_EQ(set->Fields().Item(i).Value().kind(), kinds[i]) << i;
  EXPECT_EQ(shown(set),
            "255|-7|-9000000000|True|31/01/2011 23:00:59|0.5|6F96|però €|<x/>|ab  ; "
            "NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL");
  EXPECT_EQ(outcome("SELECT WRONG SMALLINT"), "Column 'B' holds 40000, which its type does not allow");
}

TEST_F(Scripted, DecimalsLoseNoDigit) {
  const auto set = connection->Execute("SELECT MONEY");
  const auto& field = set->Fields().Item("IMPORTO");
  EXPECT_EQ(field.Type(), ado::adDecimal);
  EXPECT_EQ(field.Precision(), 15);
  EXPECT_EQ(field.NumericScale(), 2);
  EXPECT_EQ(shown(set), "0.50|12345678901234567890123456.78; -0.05|-0.10; 9999999999999.99|NULL");
  EXPECT_EQ(outcome("SELECT TOO MUCH MONEY"), "Overflow");
  EXPECT_EQ(outcome("SELECT FINE MONEY"), "0.2500000000000000000000000000|123456789012345678901234567.50");
  EXPECT_EQ(outcome("SELECT TOO FINE MONEY"),
            "Column 'SOMMA' holds 1234567890123456789012345678.5001, which has more than 28 digits");
  EXPECT_EQ(outcome("SELECT NO MONEY"), "Column 'IMPORTO' holds no number: '1,50'");
}

TEST_F(Scripted, LongTextsComeWhole) {
  std::string text;
  for (int i = 0; i < 20'000; ++i) text += i % 3 == 0 ? "€" : "\xF0\x9F\x92\xB6";
  EXPECT_EQ(outcome("SELECT LONG"), text + "; ");
}

TEST_F(Scripted, LooksBehindCountsAndForErrorsToTheEnd) {
  EXPECT_EQ(outcome("EXEC COUNTS"), "7");
  EXPECT_EQ(outcome("EXEC FAILS AFTER ITS ROWS"), "Violation of PRIMARY KEY constraint 'PK_A'");
  EXPECT_EQ(outcome("DELETE NOTHING"), "closed");
  EXPECT_EQ(outcome("INSERT SILENT FAILURE"), "The ODBC driver reported a failure with an empty description");
}

/// Drivers differ in who begins a transaction and in what fails when the server has ended it.
TEST_F(Scripted, ATransactionThatTheDatabaseEndedIsNotGoneOnWith) {
  const std::string ended = "The transaction has been rolled back by the database and must be ended first";
  for (const char* words : {"", ";TDS_Version=7.4"}) {
    connection = opened(words);
    connection->BeginTrans();
    EXPECT_EQ(outcome("INSERT DEADLOCK"), "Transaction was deadlocked") << "nothing was written, so nothing is lost";
    EXPECT_EQ(outcome("INSERT ONE"), "closed");
    EXPECT_EQ(outcome("SELECT @@TRANCOUNT AS N"), "1") << "what follows stands in a transaction all the same";
    EXPECT_EQ(outcome("INSERT DOUBLE"), "Violation of PRIMARY KEY constraint 'PK_A'") << "the transaction stands";
    EXPECT_EQ(outcome("INSERT ONE"), "closed");
    EXPECT_EQ(outcome("INSERT DEADLOCK"), "Transaction was deadlocked");
    EXPECT_EQ(outcome("INSERT ONE"), ended);
    EXPECT_EQ(errorOf([&] { connection->CommitTrans(); }), ended);
    EXPECT_NO_THROW(connection->RollbackTrans()) << words;
    EXPECT_EQ(outcome("INSERT ONE"), "closed");
    EXPECT_EQ(outcome("SELECT SETTINGS"), kDriver + words + "|auto|2|noscan");
    connection->BeginTrans();
    connection->Execute("INSERT ONE");
    EXPECT_NO_THROW(connection->CommitTrans());
  }
}

/// Some drivers tell that the link is gone, others nothing.
TEST_F(Scripted, ALostLinkKeepsNothingAndIsMadeAgain) {
  for (const char* words : {"", ";TDS_Version=7.4"}) {
    connection = opened(words);
    connection->BeginTrans();
    connection->Execute("INSERT ONE");
    EXPECT_EQ(outcome("INSERT BREAK"), "Communication link failure");
    EXPECT_NE(outcome("INSERT ONE"), "closed");
    EXPECT_ANY_THROW(connection->CommitTrans());
    EXPECT_NO_THROW(connection->RollbackTrans());
    EXPECT_EQ(outcome("INSERT ONE"), "closed");
    EXPECT_EQ(outcome("SELECT SETTINGS"), kDriver + words + "|auto|2|noscan");
    EXPECT_EQ(outcome("SELECT CONNECTIONS"), "1");
  }
  EXPECT_EQ(outcome("INSERT BREAK"), "Communication link failure");
  EXPECT_NO_THROW(connection->BeginTrans());
  EXPECT_EQ(outcome("INSERT ONE"), "closed");
  EXPECT_NO_THROW(connection->CommitTrans());
}

TEST_F(Scripted, RowsAreVisitedAsTheyComeAndKeptOnlyForAnotherStatement) {
  for (const bool asks : {false, true}) {
    std::string seen;
    connection->ForEachRow("SELECT MONEY", [&](const ado::Recordset& row) {
      return [&, &amount = row["IMPORTO"], &sum = row["SOMMA"]] {
        seen += values::toPlainText(amount.Value()) + "/" + values::toPlainText(sum.Value()) + " ";
        if (asks) connection->ForEachRow("SELECT TYPES", [&](const ado::Recordset&) { return [&] { seen += "+"; }; });
        if (asks) seen += outcome("SELECT 1") + " ";
      };
    });
    const std::string more = asks ? "++SELECT 1 " : "";
    EXPECT_EQ(seen, "0.50/12345678901234567890123456.78 " + more + "-0.05/-0.10 " + more + "9999999999999.99/ " + more);
  }
}

TEST_F(Scripted, ADatabaseThatComparesTextsOtherwiseIsRefused) {
  const std::string needed = ": a CI_AS collation is needed";
  EXPECT_EQ(errorOf([] { opened(";TDS_Version=7.4;Collation=Latin1_General_CS_AS"); }),
            "The database's collation Latin1_General_CS_AS tells capitals from small letters" + needed);
  EXPECT_EQ(
      errorOf([] { opened(";TDS_Version=7.4;Collation=Latin1_General_CI_AI"); }),
      "The database's collation Latin1_General_CI_AI takes letters with and without accents for the same" + needed);
  EXPECT_EQ(outcome("SELECT CONNECTIONS"), "1");
}

TEST_F(Scripted, ATextThatTheCodePageWouldChangeIsRefused) {
  connection = opened(";TDS_Version=7.4");
  const auto refusal = [](const std::string& text, const std::string& letter) {
    return "The server cannot compare the text " + text + ": the code page of the database's collation has no '" +
           letter + "'";
  };
  const struct {
    std::string text, expected;
  } kCases[] = {
      {"SELECT X FROM A WHERE C = 'però €'", ""},
      {"SELECT X FROM A WHERE C = N'Ω' -- 'Ω'", ""},
      {"SELECT X AS [Ω] FROM A WHERE C = 'e''è'", ""},
      {"SELECT X FROM A WHERE C = 'a' OR C = 'ő1'", refusal("'ő1'", "ő")},
      {"IF NOT EXISTS (SELECT 1 FROM A WHERE C = '\xF0\x9F\x92\xB6') INSERT ONE",
       refusal("'\xF0\x9F\x92\xB6'", "\xF0\x9F\x92\xB6")},
  };
  for (const auto& row : kCases) EXPECT_EQ(outcome(row.text), row.expected.empty() ? row.text : row.expected);
  connection = opened("");
  EXPECT_EQ(outcome("SELECT X FROM A WHERE C = 'Ω'"), "SELECT X FROM A WHERE C = 'Ω'") << "nobody knows";
}

TEST_F(Scripted, AConnectionIsLeftWhateverIsOpenOnIt) {
  const auto other = ado::createConnection();
  other->ConnectionString = kDriver;
  other->Open();
  EXPECT_EQ(outcome("SELECT CONNECTIONS"), "2");
  other->BeginTrans();
  other->Execute("INSERT ONE");
  other->Close();
  EXPECT_EQ(outcome("SELECT CONNECTIONS"), "1");
}

TEST_F(Scripted, TransactionsAreOfTheLevelAskedForAndOnlyThey) {
  for (const char* words : {"", ";TDS_Version=7.4"}) {
    for (const bool keep : {true, false}) {
      connection = opened(words);
      connection->IsolationLevel = ado::adXactSerializable;
      connection->BeginTrans();
      EXPECT_EQ(outcome("SELECT SETTINGS"),
                kDriver + words + "|manual|" + std::to_string(SQL_TXN_SERIALIZABLE) + "|noscan");
      keep ? connection->CommitTrans() : connection->RollbackTrans();
      EXPECT_EQ(outcome("SELECT SETTINGS"), kDriver + words + "|auto|2|noscan");
    }
  }
  const struct {
    const char *words, *reason;
  } kRefused[] = {{";OneLevel=1", "Optional feature not implemented"},
                  {";OwnLevel=1", "the driver chose another level"}};
  for (const auto& row : kRefused) {
    connection = opened(row.words);
    connection->BeginTrans();
    connection->CommitTrans();
    connection->IsolationLevel = ado::adXactSerializable;
    EXPECT_EQ(errorOf([&] { connection->BeginTrans(); }),
              std::string("The transaction cannot be made serializable: ") + row.reason);
    EXPECT_EQ(outcome("SELECT SETTINGS"), kDriver + row.words + "|auto|2|noscan");
  }
}

}  // namespace
