// A driver for the driver manager whose database is a script: it answers as SQL Server's driver may and the embedded
// one never does. A text it does not know comes back as the one row of its answer. With the word TDS_Version in its
// connection string it is a server with the code page 1252, reached through a driver whose transactions are the
// server's own: one is open as long as autocommit is off, and what ends one fails where the server did so first. That
// driver speaks version 7.1 of the protocol unless the word says 7.4; Old stands for one that is set up so elsewhere.
// It has a CI_AS collation, or the one that the word Collation names. With the word Empty the database has no tables
// but those that are made, and no rows; with ReadOnly it makes none.
#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace {

using Text = std::u16string;

struct Column {
  Text name;
  SQLSMALLINT type;
  SQLULEN size = 0;
  SQLSMALLINT scale = 0;
};

struct Answer {
  std::vector<Column> columns;  ///< none: a count of rows
  std::vector<std::vector<std::optional<Text>>> rows;
  Text error;
  bool endsTransaction = false;
};

const Text kRefused = u"[Maker][Driver 18][SQL Server]Violation of PRIMARY KEY constraint 'PK_A'. ";

/// The long text ends a buffer of any size in the middle of a character, sooner or later.
Text longText() {
  Text text;
  for (int i = 0; i < 20'000; ++i) text += i % 3 == 0 ? u"€" : u"\U0001F4B6";
  return text;
}

const std::map<Text, std::vector<Answer>>& script() {
  static const std::map<Text, std::vector<Answer>> answers = {
      {u"SELECT MONEY",
       {{{{u"IMPORTO", SQL_DECIMAL, 15, 2}, {u"SOMMA", SQL_NUMERIC, 38, 2}},
         {{u".50", u"12345678901234567890123456.78"}, {u"-.05", u"-0.10"}, {u"9999999999999.99", {}}},
         {}}}},
      {u"SELECT TOO MUCH MONEY", {{{{u"X", SQL_DECIMAL, 38, 0}}, {{Text(38, u'9')}}, {}}}},
      {u"SELECT FINE MONEY",
       {{{{u"QUOTA", SQL_DECIMAL, 38, 38}, {u"SOMMA", SQL_DECIMAL, 38, 4}},
         {{u".25" + Text(36, u'0'), u"123456789012345678901234567.5000"}},
         {}}}},
      {u"SELECT TOO FINE MONEY", {{{{u"SOMMA", SQL_DECIMAL, 38, 4}}, {{u"1234567890123456789012345678.5001"}}, {}}}},
      {u"SELECT NO MONEY", {{{{u"IMPORTO", SQL_DECIMAL, 15, 2}}, {{u"1,50"}}, {}}}},
      {u"SELECT TYPES",
       {{{{u"A", SQL_TINYINT},
          {u"B", SQL_SMALLINT},
          {u"C", SQL_BIGINT},
          {u"D", SQL_BIT},
          {u"E", SQL_TYPE_TIMESTAMP},
          {u"F", SQL_DOUBLE},
          {u"G", SQL_GUID, 36},
          {u"perché", SQL_WVARCHAR, 20},
          {u"I", -152},
          {u"", SQL_WCHAR, 4}},
         {{u"255", u"-7", u"-9000000000", u"1", u"2011-01-31", u"0.5", u"6F96", u"però €", u"<x/>", u"ab  "},
          {{}, {}, {}, {}, {}, {}, {}, {}, {}, {}}},
         {}}}},
      {u"SELECT WRONG SMALLINT", {{{{u"B", SQL_SMALLINT}}, {{u"40000"}}, {}}}},
      {u"SELECT LONG", {{{{u"T", SQL_WLONGVARCHAR}}, {{longText()}, {u""}}, {}}}},
      {u"EXEC COUNTS", {{}, {}, {{{u"X", SQL_INTEGER}}, {{u"7"}}, {}}, {{{u"Y", SQL_INTEGER}}, {{u"8"}}, {}}}},
      {u"EXEC FAILS AFTER ITS ROWS", {{{{u"X", SQL_INTEGER}}, {{u"7"}}, {}}, {{}, {}, kRefused}}},
      {u"INSERT DOUBLE", {{{}, {}, kRefused}}},
      {u"INSERT DEADLOCK", {{{}, {}, u"[Maker][SQL Server]Transaction was deadlocked", true}}},
      {u"INSERT SILENT FAILURE", {{{}, {}, u"[Maker]"}}},
      {u"INSERT ONE", {{}}},
      {u"BEGIN TRANSACTION", {{}}},
      {u"INSERT BREAK", {{{}, {}, u"[Maker]Communication link failure"}}},
  };
  return answers;
}

struct Connection {
  Text opened;
  bool autocommit = true;
  std::uintptr_t isolation = SQL_TXN_READ_COMMITTED;
  unsigned transactions = 0;
  bool broken = false;
  const void* answering = nullptr;  ///< the statement that has rows to come: no other runs until it is read

  std::set<Text> tables;  ///< made on it

  bool is(const char16_t* word) const { return opened.find(word) != Text::npos; }
  bool tds() const { return is(u"TDS_Version"); }
};

struct Statement {
  explicit Statement(Connection& owner) : connection(owner) {}
  ~Statement() {
    if (connection.answering == this) connection.answering = nullptr;
  }
  Connection& connection;
  bool noScan = false;
  std::vector<Answer> answers;
  std::size_t answer = 0;
  std::size_t row = 0;       ///< one-based; 0 is before the first
  std::size_t column = 0;    ///< of the text that is read in parts
  std::size_t position = 0;  ///< how much of it is read
};

Text error;
unsigned connected = 0;

Text shown(std::uintptr_t value) {
  const auto digits = std::to_string(value);
  return {digits.begin(), digits.end()};
}

SQLRETURN refused(const char16_t* why) {
  error = why;
  return SQL_ERROR;
}

/// What a letter becomes in the code page 1252, as far as the tests know it.
char16_t inCodePage(char16_t letter) {
  return letter < 0x100 || letter == u'€' ? letter : letter == u'ő' ? u'o' : u'?';
}

/// The name behind these words; nothing where they are not there.
std::optional<Text> nameBehind(const Text& text, std::u16string_view words) {
  const auto at = text.find(words);
  if (at == Text::npos) return std::nullopt;
  const auto start = text.find_first_not_of(u' ', at + words.size());
  return text.substr(start, text.find_first_of(u" (\n", start) - start);
}

/// What a database that has only the tables made on this connection refuses.
std::optional<Text> refusal(const Text& text, Connection& connection) {
  const auto made = nameBehind(text, u"CREATE TABLE ");
  if (made && connection.is(u"ReadOnly")) return u"[Maker][SQL Server]CREATE TABLE permission denied.";
  if (made && !connection.tables.insert(*made).second)
    return u"[Maker][SQL Server]There is already an object named '" + *made + u"' in the database.";
  const auto read = nameBehind(text, u" FROM ");
  if (read && !connection.tables.contains(*read)) return u"[Maker][SQL Server]Invalid object name '" + *read + u"'.";
  return std::nullopt;
}

std::vector<Answer> collation(const Connection& connection) {
  const Text folds = connection.is(u"_CS") ? u"0" : u"1", accents = connection.is(u"_AI") ? u"0" : u"1";
  const Text name = connection.is(u"_CS") ? u"Latin1_General_CS_AS" : u"Latin1_General_CI_AI";
  return {{{{u"CI", SQL_INTEGER}, {u"ACC", SQL_INTEGER}, {u"NAME", SQL_VARCHAR, 128}}, {{folds, accents, name}}, {}}};
}

std::vector<Answer> answersTo(const Text& text, const Statement& statement) {
  auto& connection = statement.connection;
  if (connection.is(u"Empty")) {
    if (const auto why = refusal(text, connection)) return {{{}, {}, *why}};
    if (nameBehind(text, u" FROM ")) return {{{{u"X", SQL_INTEGER}}, {}, {}}};
  }
  if (const auto found = script().find(text); found != script().end()) return found->second;
  const auto one = [](Text value, SQLSMALLINT type) {
    return std::vector<Answer>{{{{u"X", type, 4000}}, {{std::move(value)}}, {}}};
  };
  if (text == u"SELECT @@TRANCOUNT AS N") return one(shown(connection.transactions), SQL_INTEGER);
  constexpr std::u16string_view kLetter = u"SELECT UNICODE(CONVERT(varchar(8), N'";
  if (connection.tds() && text.starts_with(kLetter)) return one(shown(inCodePage(text[kLetter.size()])), SQL_INTEGER);
  if (connection.tds() && text.find(u"DATABASEPROPERTYEX") != Text::npos) return collation(connection);
  if (text == u"SELECT CONNECTIONS") return one(shown(connected), SQL_INTEGER);
  if (text == u"SELECT SETTINGS") {
    return one(connection.opened + (connection.autocommit ? u"|auto|" : u"|manual|") + shown(connection.isolation) +
                   (statement.noScan ? u"|noscan" : u"|scan"),
               SQL_WVARCHAR);
  }
  return one(text, SQL_WVARCHAR);
}

SQLRETURN begin(Statement& statement) {
  auto& connection = statement.connection;
  statement.row = 0;
  connection.answering = nullptr;
  if (statement.answer >= statement.answers.size()) return SQL_NO_DATA;
  const auto& answer = statement.answers[statement.answer];
  if (answer.endsTransaction) connection.transactions = 0;
  if (connection.broken) return refused(u"[Maker]Communication link failure");
  if (answer.error.empty()) {
    if (!answer.columns.empty()) connection.answering = &statement;
    return SQL_SUCCESS;
  }
  error = answer.error;
  return SQL_ERROR;
}

template <typename T>
void store(SQLPOINTER target, T value) {
  std::memcpy(target, &value, sizeof value);
}

/// Gives the next part of a text without telling how much is left, as drivers do for unbounded columns.
SQLRETURN storeText(Statement& statement, const Text& text, SQLPOINTER target, SQLLEN size, SQLLEN* length) {
  const auto room = static_cast<std::size_t>(size) / sizeof(char16_t) - 1;
  const auto part = text.substr(statement.position, room);
  std::memcpy(target, part.c_str(), (part.size() + 1) * sizeof(char16_t));
  statement.position += part.size();
  const bool more = statement.position < text.size();
  *length = more ? SQL_NO_TOTAL : static_cast<SQLLEN>(part.size() * sizeof(char16_t));
  return more ? SQL_SUCCESS_WITH_INFO : SQL_SUCCESS;
}

/// Stands for the one day of the script, with a fraction of a second.
constexpr SQL_TIMESTAMP_STRUCT kDay{2011, 1, 31, 23, 0, 59, 997'000'000};

}  // namespace

extern "C" {

SQLRETURN SQL_API SQLAllocHandle(SQLSMALLINT type, SQLHANDLE parent, SQLHANDLE* handle) {
  static int environment = 0;
  *handle = type == SQL_HANDLE_ENV   ? static_cast<SQLHANDLE>(&environment)
            : type == SQL_HANDLE_DBC ? static_cast<SQLHANDLE>(new Connection)
                                     : new Statement(*static_cast<Connection*>(parent));
  return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLFreeHandle(SQLSMALLINT type, SQLHANDLE handle) {
  if (type == SQL_HANDLE_DBC) delete static_cast<Connection*>(handle);
  if (type == SQL_HANDLE_STMT) delete static_cast<Statement*>(handle);
  return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLSetEnvAttr(SQLHENV, SQLINTEGER, SQLPOINTER, SQLINTEGER) { return SQL_SUCCESS; }

SQLRETURN SQL_API SQLDriverConnectW(SQLHDBC handle, SQLHWND, SQLWCHAR* text, SQLSMALLINT length, SQLWCHAR*, SQLSMALLINT,
                                    SQLSMALLINT*, SQLUSMALLINT) {
  auto& connection = *static_cast<Connection*>(handle);
  const auto* start = reinterpret_cast<const char16_t*>(text);
  connection.opened = length == SQL_NTS ? Text(start) : Text(start, static_cast<std::size_t>(length));
  if (connection.opened.find(u"UID={nobody}") == Text::npos) {
    ++connected;
    return SQL_SUCCESS;
  }
  error = u"[Maker][Driver][SQL Server]Login failed for user 'nobody'.";
  return SQL_ERROR;
}

/// The version of the protocol, asked for by the number that it has at one maker's driver.
SQLRETURN SQL_API SQLGetInfoW(SQLHDBC handle, SQLUSMALLINT what, SQLPOINTER value, SQLSMALLINT, SQLSMALLINT* length) {
  const auto& connection = *static_cast<Connection*>(handle);
  if (what != 1300 || !(connection.tds() || connection.is(u"Old"))) return refused(u"[Driver]Option type out of range");
  store<SQLUINTEGER>(value, 7U << 16U | (connection.is(u"TDS_Version=7.4") ? 4U : 1U));
  *length = sizeof(SQLUINTEGER);
  return SQL_SUCCESS;
}

/// Refused while a transaction is open, as the standard says.
SQLRETURN SQL_API SQLDisconnect(SQLHDBC handle) {
  const auto& connection = *static_cast<Connection*>(handle);
  if (connection.transactions > 0 && !connection.broken) return refused(u"[Maker]Invalid transaction state");
  --connected;
  return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLSetConnectAttrW(SQLHDBC handle, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER) {
  auto& connection = *static_cast<Connection*>(handle);
  const auto number = reinterpret_cast<std::uintptr_t>(value);
  if (attribute == SQL_ATTR_AUTOCOMMIT) {
    const bool on = number == SQL_AUTOCOMMIT_ON;
    const bool lost = connection.broken || (!connection.autocommit && connection.transactions == 0);
    if (connection.tds() && on && lost) return refused(u"[Driver]Could not change transaction status");
    if (connection.tds()) connection.transactions = on ? 0 : 1;
    connection.autocommit = on;
  }
  if (attribute == SQL_ATTR_TXN_ISOLATION) {
    if (connection.is(u"OneLevel")) return refused(u"[Driver]Optional feature not implemented");
    if (connection.transactions > 0) return refused(u"[Driver]Attribute cannot be set now");
    if (!connection.is(u"OwnLevel")) connection.isolation = number;
  }
  return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLGetConnectAttrW(SQLHDBC handle, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER, SQLINTEGER*) {
  const auto& connection = *static_cast<Connection*>(handle);
  if (attribute == SQL_ATTR_CONNECTION_DEAD && connection.tds())
    return store<SQLUINTEGER>(value, connection.broken ? SQL_CD_TRUE : SQL_CD_FALSE), SQL_SUCCESS;
  if (attribute != SQL_ATTR_TXN_ISOLATION) return SQL_ERROR;
  store(value, static_cast<SQLULEN>(connection.isolation));
  return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLEndTran(SQLSMALLINT, SQLHANDLE handle, SQLSMALLINT) {
  auto& connection = *static_cast<Connection*>(handle);
  if (connection.broken) return refused(u"[Maker]Communication link failure");
  const bool next = connection.tds() && !connection.autocommit;
  if (next && connection.transactions == 0)
    return refused(u"[Maker][SQL Server]The transaction request has no corresponding BEGIN TRANSACTION.");
  connection.transactions = next ? 1 : 0;
  return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLSetStmtAttrW(SQLHSTMT handle, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER) {
  if (attribute == SQL_ATTR_NOSCAN) static_cast<Statement*>(handle)->noScan = value != nullptr;
  return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLGetStmtAttrW(SQLHSTMT, SQLINTEGER, SQLPOINTER value, SQLINTEGER, SQLINTEGER*) {
  store<SQLPOINTER>(value, nullptr);
  return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLExecDirectW(SQLHSTMT handle, SQLWCHAR* text, SQLINTEGER length) {
  auto& statement = *static_cast<Statement*>(handle);
  const Text asked(reinterpret_cast<const char16_t*>(text), static_cast<std::size_t>(length));
  if (statement.connection.answering != nullptr)
    return refused(u"[Driver]Connection is busy with results for another command");
  if (asked == u"DELETE NOTHING") return SQL_NO_DATA;
  if (asked == u"BEGIN TRANSACTION") statement.connection.transactions = 1;
  if (asked == u"INSERT BREAK") statement.connection.broken = true;
  const bool writes = asked.starts_with(u"INSERT") || asked.find(u"CREATE ") != Text::npos;
  if (writes && !statement.connection.autocommit) statement.connection.transactions = 1;
  statement.answers = answersTo(asked, statement);
  statement.answer = 0;
  return begin(statement);
}

SQLRETURN SQL_API SQLMoreResults(SQLHSTMT handle) {
  auto& statement = *static_cast<Statement*>(handle);
  ++statement.answer;
  return begin(statement);
}

SQLRETURN SQL_API SQLNumResultCols(SQLHSTMT handle, SQLSMALLINT* count) {
  const auto& statement = *static_cast<Statement*>(handle);
  const bool any = statement.answer < statement.answers.size();
  *count = any ? static_cast<SQLSMALLINT>(statement.answers[statement.answer].columns.size()) : SQLSMALLINT{0};
  return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLDescribeColW(SQLHSTMT handle, SQLUSMALLINT position, SQLWCHAR* name, SQLSMALLINT room,
                                  SQLSMALLINT* length, SQLSMALLINT* type, SQLULEN* size, SQLSMALLINT* scale,
                                  SQLSMALLINT* nullable) {
  const auto& statement = *static_cast<Statement*>(handle);
  const auto& column = statement.answers[statement.answer].columns.at(position - 1U);
  const auto written = column.name.substr(0, static_cast<std::size_t>(room) - 1);
  std::memcpy(name, written.c_str(), (written.size() + 1) * sizeof(char16_t));
  *length = static_cast<SQLSMALLINT>(written.size());
  *type = column.type;
  *size = column.size;
  *scale = column.scale;
  *nullable = position == 1 ? SQL_NO_NULLS : SQL_NULLABLE;
  return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLFetch(SQLHSTMT handle) {
  auto& statement = *static_cast<Statement*>(handle);
  statement.column = 0;
  if (++statement.row <= statement.answers[statement.answer].rows.size()) return SQL_SUCCESS;
  statement.connection.answering = nullptr;
  return SQL_NO_DATA;
}

SQLRETURN SQL_API SQLGetData(SQLHSTMT handle, SQLUSMALLINT position, SQLSMALLINT type, SQLPOINTER target, SQLLEN size,
                             SQLLEN* length) {
  auto& statement = *static_cast<Statement*>(handle);
  const auto& cell = statement.answers[statement.answer].rows[statement.row - 1].at(position - 1U);
  if (statement.column != position) statement.position = 0;
  statement.column = position;
  *length = cell ? size : SQL_NULL_DATA;
  if (!cell) return SQL_SUCCESS;
  if (type == SQL_C_WCHAR) return storeText(statement, *cell, target, size, length);
  const std::string plain(cell->begin(), cell->end());
  if (type == SQL_C_SBIGINT) store(target, static_cast<SQLBIGINT>(std::stoll(plain)));
  if (type == SQL_C_DOUBLE) store(target, std::stod(plain));
  if (type == SQL_C_BIT) store(target, static_cast<unsigned char>(plain == "1" ? 1 : 0));
  if (type == SQL_C_TYPE_TIMESTAMP) store(target, kDay);
  return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLGetDiagRecW(SQLSMALLINT, SQLHANDLE, SQLSMALLINT record, SQLWCHAR* state, SQLINTEGER* native,
                                 SQLWCHAR* text, SQLSMALLINT room, SQLSMALLINT* length) {
  if (record != 1 || error.empty()) return SQL_NO_DATA;
  std::memcpy(state, u"23000", 6 * sizeof(char16_t));
  if (native != nullptr) *native = 2627;
  const auto written = error.substr(0, static_cast<std::size_t>(std::max<SQLSMALLINT>(room, 1)) - 1);
  std::memcpy(text, written.c_str(), (written.size() + 1) * sizeof(char16_t));
  if (length != nullptr) *length = static_cast<SQLSMALLINT>(error.size());
  return SQL_SUCCESS;
}

/// The driver manager uses the call above only where this one is.
SQLRETURN SQL_API SQLGetDiagFieldW(SQLSMALLINT, SQLHANDLE, SQLSMALLINT, SQLSMALLINT, SQLPOINTER, SQLSMALLINT,
                                   SQLSMALLINT*) {
  return SQL_NO_DATA;
}

}  // extern "C"
