#include "odbc/OdbcConnection.h"

#include <memory>
#include <utility>

#include "ado/Messages.h"
#include "odbc/Login.h"
#include "odbc/Rows.h"
#include "odbc/SingleStatement.h"
#include "odbc/Wide.h"
#include "values/Conversion.h"
#include "values/Errore.h"

namespace odbc {

using namespace ado;

namespace {

using values::Errore;

constexpr const char* kRolledBack = "The transaction has been rolled back by the database and must be ended first";

SQLPOINTER number(std::uintptr_t value) { return reinterpret_cast<SQLPOINTER>(value); }

}  // namespace

OdbcConnection::~OdbcConnection() { disconnect(); }

void OdbcConnection::Open(std::string_view user, std::string_view password, std::int32_t) {
  if (open_) throw Errore(kObjectOpen);
  user_ = user;
  password_ = password;
  connect();
  open_ = true;
}

void OdbcConnection::connect() {
  auto session = login(ConnectionString, user_, password_);
  environment_ = std::move(session.environment);
  connection_ = std::move(session.connection);
  connected_ = true;
  const auto ask = [this](std::string_view question) { return run(question); };
  try {
    codePage_.emplace(ask, requireCollation(ask));
  } catch (const Errore&) {
    disconnect();
    throw;
  }
}

void OdbcConnection::disconnect() {
  if (!connected_) return;
  if (inTransaction_) SQLEndTran(SQL_HANDLE_DBC, connection_.get(), SQL_ROLLBACK);
  SQLDisconnect(connection_.get());
  connection_.reset();
  environment_.reset();
  connected_ = inTransaction_ = rolledBack_ = lost_ = false;
  usualLevel_.reset();
}

void OdbcConnection::Close() {
  requireOpen();
  disconnect();
  open_ = false;
}

ObjectStateEnum OdbcConnection::State() const { return open_ ? adStateOpen : adStateClosed; }

void OdbcConnection::requireOpen() const {
  if (!open_) throw Errore(kObjectClosed);
}

/// Connects again when the link was lost; not in the middle of a transaction.
void OdbcConnection::requireConnected() {
  requireOpen();
  if (rolledBack_) throw Errore(kRolledBack);
  if (connected_ && !lost_) return;
  disconnect();
  connect();
}

bool OdbcConnection::isLost() const {
  SQLUINTEGER dead = SQL_CD_FALSE;
  const auto outcome = SQLGetConnectAttr(connection_.get(), SQL_ATTR_CONNECTION_DEAD, &dead, SQL_IS_UINTEGER, nullptr);
  return SQL_SUCCEEDED(outcome) && dead == SQLUINTEGER{SQL_CD_TRUE};
}

/// Runs a statement and finds out what its failure has taken with it.
void OdbcConnection::guarded(std::string_view text, const std::function<void()>& work) {
  requireConnected();
  requireSingleStatement(text);
  codePage_->require(text);
  try {
    work();
    worked_ = true;
  } catch (const Errore&) {
    lost_ = isLost();
    if (inTransaction_) {
      rolledBack_ = lost_ || transactionIsGone();
      if (rolledBack_ && !worked_ && !lost_) beginAnew();
    }
    throw;
  }
}

RecordsetPtr OdbcConnection::Execute(std::string_view text) {
  RecordsetPtr rows;
  guarded(text, [&] { rows = run(text); });
  return rows;
}

void OdbcConnection::ForEachRow(std::string_view text, const RowVisitor& visit) {
  guarded(text, [&] {
    runInto(text, [&](const Handle& statement, SQLSMALLINT columns) {
      RowStream stream(statement, columns);
      struct Current {
        RowStream*& place;
        RowStream* before;
        ~Current() { place = before; }
      } const current{stream_, std::exchange(stream_, &stream)};
      stream.visitAll(visit);
    });
  });
}

void OdbcConnection::runInto(std::string_view text, const Reading& read) const {
  // A connection may not do anything else while rows of one statement are to come.
  if (stream_) stream_->keepRest();
  const Handle statement(SQL_HANDLE_STMT, connection_.get());
  // The text is the database's, not the driver's: nothing in it is an escape. A driver that knows none refuses.
  SQLSetStmtAttr(statement.get(), SQL_ATTR_NOSCAN, number(SQL_NOSCAN_ON), 0);
  const auto wide = toWide(text);
  statement.check(SQLExecDirectW(statement.get(), units(wide), static_cast<SQLINTEGER>(wide.size())));
  bool found = false;
  // A batch such as IF … INSERT may answer with counts first; an error may stand in a later answer.
  for (SQLRETURN outcome = SQL_SUCCESS; outcome != SQL_NO_DATA; outcome = SQLMoreResults(statement.get())) {
    statement.check(outcome);
    SQLSMALLINT columns = 0;
    statement.check(SQLNumResultCols(statement.get(), &columns));
    if (columns == 0 || std::exchange(found, true)) continue;
    read(statement, columns);
  }
}

RecordsetPtr OdbcConnection::run(std::string_view text) const {
  RecordsetPtr rows;
  runInto(text, [&](const Handle& statement, SQLSMALLINT columns) { rows = readRows(statement, columns); });
  return rows ? rows : std::make_shared<Recordset>();
}

/// SQL Server ends the whole transaction at some errors. What follows would be in a new one, and a commit would keep
/// the second half without the first. A database that does not know the question keeps its transactions.
bool OdbcConnection::transactionIsGone() const {
  try {
    const auto open = run("SELECT @@TRANCOUNT AS N");
    return open->State() == adStateOpen && !open->Eof() && values::toInt32(open->Fields().Item(0).Value()) == 0;
  } catch (const Errore&) {
    return false;
  }
}

/// What has done nothing yet has lost nothing: a look at a table that is missing need not cost the transaction.
void OdbcConnection::beginAnew() {
  try {
    SQLEndTran(SQL_HANDLE_DBC, connection_.get(), SQL_ROLLBACK);
    leaveManualMode();
    setAutocommit(false);
    rolledBack_ = false;
  } catch (const Errore&) {
    // Then it stays gone, until the caller ends it.
  }
}

void OdbcConnection::setAutocommit(bool on) {
  const auto mode = on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF;
  connection_.check(SQLSetConnectAttr(connection_.get(), SQL_ATTR_AUTOCOMMIT, number(mode), 0));
}

/// Some drivers take back a transaction of their own when they leave the mode, and fail where the database has ended
/// it. They are given one.
void OdbcConnection::leaveManualMode() {
  try {
    setAutocommit(true);
  } catch (const Errore&) {
    run("BEGIN TRANSACTION");
    setAutocommit(true);
  }
}

std::optional<SQLULEN> OdbcConnection::isolation() const {
  SQLULEN level = 0;
  if (!SQL_SUCCEEDED(SQLGetConnectAttr(connection_.get(), SQL_ATTR_TXN_ISOLATION, &level, sizeof level, nullptr)))
    return std::nullopt;
  return level;
}

/// Serialisable for one transaction, where IsolationLevel says so: statements outside it keep the usual level.
void OdbcConnection::raiseIsolation() {
  if (IsolationLevel != adXactSerializable) return;
  const auto usual = isolation();
  if (usual == SQLULEN{SQL_TXN_SERIALIZABLE}) return;
  const auto outcome = SQLSetConnectAttr(connection_.get(), SQL_ATTR_TXN_ISOLATION, number(SQL_TXN_SERIALIZABLE), 0);
  // A driver may also take another level than the one it was given.
  const auto got = SQL_SUCCEEDED(outcome) ? isolation() : std::nullopt;
  if (!SQL_SUCCEEDED(outcome) || got.value_or(SQL_TXN_SERIALIZABLE) != SQLULEN{SQL_TXN_SERIALIZABLE}) {
    const auto reason = SQL_SUCCEEDED(outcome) ? "the driver chose another level" : connection_.description();
    restoreIsolation(usual);
    throw Errore("The transaction cannot be made serializable: " + reason);
  }
  usualLevel_ = usual;
}

void OdbcConnection::restoreIsolation(std::optional<SQLULEN> level) {
  if (level) SQLSetConnectAttr(connection_.get(), SQL_ATTR_TXN_ISOLATION, number(*level), 0);
}

void OdbcConnection::BeginTrans() {
  requireOpen();
  if (inTransaction_) throw Errore("Cannot start more transactions on this session");
  requireConnected();
  raiseIsolation();
  try {
    setAutocommit(false);
  } catch (const Errore&) {
    lost_ = isLost();
    restoreIsolation(std::exchange(usualLevel_, std::nullopt));
    throw;
  }
  inTransaction_ = true;
  ++transactions_;
  worked_ = false;
}

void OdbcConnection::CommitTrans() {
  requireTransaction();
  if (rolledBack_) throw Errore(kRolledBack);
  if (SQL_SUCCEEDED(SQLEndTran(SQL_HANDLE_DBC, connection_.get(), SQL_COMMIT))) return leaveTransaction();
  const Errore failure(connection_.description());
  lost_ = isLost();
  rolledBack_ = lost_ || transactionIsGone();
  throw failure;
}

/// A driver that cannot take back is asked whether there is anything left to take back. Where nobody knows, the
/// connection is given up, and the work on it with it.
void OdbcConnection::RollbackTrans() {
  requireTransaction();
  if (lost_) return disconnect();
  if (SQL_SUCCEEDED(SQLEndTran(SQL_HANDLE_DBC, connection_.get(), SQL_ROLLBACK)) || transactionIsGone())
    return leaveTransaction();
  disconnect();
}

void OdbcConnection::requireTransaction() const {
  requireOpen();
  if (!inTransaction_) throw Errore("No transaction is active");
}

void OdbcConnection::leaveTransaction() {
  inTransaction_ = false;
  rolledBack_ = false;
  try {
    leaveManualMode();
  } catch (const Errore&) {
    // Each later statement would hang in a transaction that nobody ends.
    return disconnect();
  }
  restoreIsolation(std::exchange(usualLevel_, std::nullopt));
}

}  // namespace odbc
