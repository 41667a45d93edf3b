#include "sqlite/SqliteConnection.h"

#include <array>
#include <charconv>
#include <system_error>
#include <utility>

#include "ado/Messages.h"
#include "ado/connection/ConnectionString.h"
#include "sqlite/DatabaseFile.h"
#include "sqlite/emitter/Translate.h"
#include "sqlite/functions/Functions.h"
#include "values/Conversion.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace sqlite {

using namespace ado;

namespace {

using values::Errore;

constexpr int kBusyTimeout = 5;           ///< seconds
constexpr int kLongestBusyTimeout = 600;  ///< seconds
/// More than the distinct statements of the whole system.
constexpr std::size_t kCachedPlans = 256;
constexpr std::int32_t kModeRead = 1;

bool isTrue(const std::string& entry) {
  return values::compareText(entry, "true") == 0 || values::compareText(entry, "yes") == 0 || entry == "1";
}

FileWish wishOf(const Connection& connection) {
  const auto& text = connection.ConnectionString;
  return {connectionEntry(text, "Data Source"), isTrue(connectionEntry(text, "Create")),
          connection.Mode == kModeRead || values::compareText(connectionEntry(text, "Mode"), "read") == 0};
}

/// Seconds, in whole numbers.
int busyTimeout(std::string_view connectionString) {
  const auto text = connectionEntry(connectionString, "Busy Timeout");
  if (text.empty()) return kBusyTimeout;
  int seconds = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
  if (error != std::errc() || end != text.data() + text.size() || seconds < 0 || seconds > kLongestBusyTimeout)
    throw Errore("Busy Timeout is a number of seconds from 0 to " + std::to_string(kLongestBusyTimeout) + ", not '" +
                 text + "'");
  return seconds;
}

struct Synchronous {
  std::string_view word;
  const char* statement;
};
/// The usual one first.
constexpr std::array kSynchronous{Synchronous{"Full", "PRAGMA synchronous = FULL"},
                                  Synchronous{"Normal", "PRAGMA synchronous = NORMAL"},
                                  Synchronous{"Off", "PRAGMA synchronous = OFF"}};

const Synchronous& synchronous(std::string_view connectionString) {
  const auto text = connectionEntry(connectionString, "Synchronous");
  if (text.empty()) return kSynchronous.front();
  for (const auto& each : kSynchronous)
    if (values::compareText(each.word, text) == 0) return each;
  throw Errore("Synchronous is Full, Normal or Off, not '" + text + "'");
}

void configure(sqlite3* database, const std::string& connectionString) {
  sqlite3_busy_timeout(database, busyTimeout(connectionString) * 1000);
  // A misspelt name between double quotes must be an error, not a text.
  sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  run(database, "PRAGMA foreign_keys = ON");
  run(database, "PRAGMA temp_store = MEMORY");
  run(database, "PRAGMA cache_size = -65536");
  run(database, synchronous(connectionString).statement);
}

}  // namespace

SqliteConnection::~SqliteConnection() {
  // Plans drop their stages, so they go before the database; an open transaction is rolled back by closing.
  cache_.reset();
}

void SqliteConnection::Open(std::string_view, std::string_view, std::int32_t) {
  if (database_) throw Errore(kObjectOpen);
  const auto wish = wishOf(*this);
  if (wish.file.empty()) throw Errore("The connection string names no Data Source");
  Database database;
  try {
    database = openFile(wish);
    configure(database.get(), ConnectionString);
    registerFunctions(database.get());
    catalog_.emplace(database.get());
  } catch (const Errore& error) {
    catalog_.reset();
    throw Errore("Cannot open the database file '" + wish.file + "': " + error.what());
  }
  writable_ = !wish.readOnly && sqlite3_db_readonly(database.get(), "main") == 0;
  cache_.emplace(kCachedPlans);
  database_ = std::move(database);
  lastIdentity_.reset();
  inTransaction_ = false;
}

void SqliteConnection::Close() {
  requireOpen();
  cache_.reset();
  catalog_.reset();
  database_.reset();
  inTransaction_ = false;
}

ObjectStateEnum SqliteConnection::State() const { return database_ ? adStateOpen : adStateClosed; }

void SqliteConnection::requireOpen() const {
  if (!database_) throw Errore(kObjectClosed);
}

RecordsetPtr SqliteConnection::Execute(std::string_view text) {
  requireOpen();
  // What follows a rollback by the engine must not be written outside the caller's transaction.
  if (inTransaction_ && sqlite3_get_autocommit(database_.get()) != 0) {
    throw Errore("The transaction has been rolled back by the database and must be ended first");
  }
  ++statistics_.executed;
  const tsql::Scan scan = tsql::scan(text);
  auto& plan = planFor(scan);
  if (plan.kind() == Translation::Kind::Identity) return identityRow(plan.columns());
  if (plan.kind() == Translation::Kind::Schema) return runSchemaChange(plan, scan);
  if (auto rows = plan.run(scan.literals)) return rows;
  if (plan.insertsIdentity() && sqlite3_changes(database_.get()) > 0) {
    lastIdentity_ = sqlite3_last_insert_rowid(database_.get());
  }
  return std::make_shared<Recordset>();
}

Plan& SqliteConnection::planFor(const tsql::Scan& scan) {
  if (auto* plan = cache_->find(scan.key)) return *plan;
  // Another program may have changed the tables; only a text seen for the first time needs to know.
  if (catalog_->outdated()) reloadSchema();
  return cache_->insert(scan.key, makePlan(scan));
}

std::unique_ptr<Plan> SqliteConnection::makePlan(const tsql::Scan& scan) {
  const std::string prefix = "bk_stage" + std::to_string(++stagePrefixes_) + "_";
  auto plan = std::make_unique<Plan>(database_.get(), statistics_, translate(scan, *catalog_, prefix));
  plan->setUp(scan.literals);
  return plan;
}

/// No plan outlives a change of the tables it was made for, its own included.
RecordsetPtr SqliteConnection::runSchemaChange(Plan& plan, const tsql::Scan& scan) {
  try {
    plan.run(scan.literals);
  } catch (...) {
    cache_->remove(scan.key);
    throw;
  }
  schemaChangedInTransaction_ = inTransaction_;
  reloadSchema();
  return std::make_shared<Recordset>();
}

void SqliteConnection::reloadSchema() {
  cache_->clear();
  catalog_->reload();
}

RecordsetPtr SqliteConnection::identityRow(const std::vector<tsql::ResultColumn>& columns) const {
  auto set = std::make_shared<Recordset>();
  set->CursorLocation = adUseClient;
  auto& field = set->Fields().Append(columns.empty() ? "" : columns.front().name, adDecimal, 0, adFldIsNullable);
  field.Precision(28);
  field.NumericScale(0);
  set->Open();
  auto cells = set->AppendRow();
  if (lastIdentity_) cells[0] = values::Decimal::FromScaled(*lastIdentity_);
  set->MoveFirst();
  return set;
}

void SqliteConnection::BeginTrans() {
  requireOpen();
  if (inTransaction_) throw Errore("Cannot start more transactions on this session");
  // Every transaction here is serialisable, whatever IsolationLevel asks. The write lock is taken at once, so that
  // a second writer waits at its beginning and never fails halfway.
  run(database_.get(), writable_ ? "BEGIN IMMEDIATE" : "BEGIN");
  inTransaction_ = true;
  schemaChangedInTransaction_ = false;
}

void SqliteConnection::CommitTrans() {
  requireOpen();
  if (!inTransaction_) throw Errore("No transaction is active");
  if (sqlite3_get_autocommit(database_.get()) != 0) {
    throw Errore("The transaction has been rolled back by the database and must be ended first");
  }
  run(database_.get(), "COMMIT");
  inTransaction_ = false;
}

void SqliteConnection::RollbackTrans() {
  requireOpen();
  if (!inTransaction_) throw Errore("No transaction is active");
  if (sqlite3_get_autocommit(database_.get()) == 0) run(database_.get(), "ROLLBACK");
  inTransaction_ = false;
  forgetRolledBack();
}

/// What was made inside the transaction is gone: stages, and tables if any were.
void SqliteConnection::forgetRolledBack() {
  cache_->removeStaged();
  if (schemaChangedInTransaction_) reloadSchema();
  schemaChangedInTransaction_ = false;
}

}  // namespace sqlite
