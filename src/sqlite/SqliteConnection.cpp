#include "sqlite/SqliteConnection.h"

#include <utility>

#include "ado/Messages.h"
#include "engine/ResultSet.h"
#include "sqlite/BoundInsert.h"
#include "sqlite/ConnectionWords.h"
#include "sqlite/SessionTracker.h"
#include "sqlite/emitter/Translate.h"
#include "sqlite/functions/Functions.h"
#include "values/Conversion.h"
#include "values/Errore.h"

namespace sqlite {

using namespace ado;

namespace {

using values::Errore;

/// More than the distinct statements of the whole system.
constexpr std::size_t kCachedPlans = 256;
constexpr std::int32_t kModeRead = 1;

void configure(sqlite3* database, const ConnectionWords& words) {
  sqlite3_busy_timeout(database, words.busyTimeout * 1000);
  // A misspelt name between double quotes must be an error, not a text.
  sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  run(database, "PRAGMA foreign_keys = ON");
  run(database, "PRAGMA temp_store = MEMORY");
  run(database, "PRAGMA cache_size = -65536");
  run(database, words.synchronous);
}

}  // namespace

SqliteConnection::~SqliteConnection() {
  // Plans drop their stages, so they go before the database; an open transaction is rolled back by closing.
  tracker_.reset();
  rollback_.reset();
  cache_.reset();
}

void SqliteConnection::Open(std::string_view, std::string_view, std::int32_t) {
  if (database_) throw Errore(kObjectOpen);
  auto words = wordsOf(ConnectionString);
  words.file.readOnly = words.file.readOnly || Mode == kModeRead;
  Database database;
  try {
    database = openFile(words.file);
    configure(database.get(), words);
    registerFunctions(database.get());
    catalog_.emplace(database.get());
  } catch (const Errore& error) {
    catalog_.reset();
    throw Errore("Cannot open the database file '" + words.file.file + "': " + error.what());
  }
  writable_ = !words.file.readOnly && sqlite3_db_readonly(database.get(), "main") == 0;
  cache_.emplace(kCachedPlans);
  database_ = std::move(database);
  lastIdentity_.reset();
  inTransaction_ = false;
}

void SqliteConnection::Close() {
  requireOpen();
  tracker_.reset();
  rollback_.reset();
  cache_.reset();
  catalog_.reset();
  database_.reset();
  inTransaction_ = false;
}

ChangeTracker* SqliteConnection::changes() {
  if (database_ && !tracker_) tracker_ = makeSessionTracker(database_.get(), *catalog_);
  return tracker_.get();
}

ado::ConnectionPtr SqliteConnection::reader() {
  requireOpen();
  const auto mode = prepare(database_.get(), "PRAGMA journal_mode");
  if (sqlite3_step(mode.get()) != SQLITE_ROW) throwFailure(database_.get());
  if (std::string_view(reinterpret_cast<const char*>(sqlite3_column_text(mode.get(), 0))) != "wal") return nullptr;
  auto reader = std::make_shared<SqliteConnection>();
  reader->ConnectionString = ConnectionString;
  reader->Open();
  return reader;
}

std::string SqliteConnection::commitMark() {
  requireOpen();
  const auto version = prepare(database_.get(), "PRAGMA data_version");
  if (sqlite3_step(version.get()) != SQLITE_ROW) throwFailure(database_.get());
  return std::to_string(sqlite3_column_int64(version.get(), 0));
}

ObjectStateEnum SqliteConnection::State() const { return database_ ? adStateOpen : adStateClosed; }

void SqliteConnection::requireOpen() const {
  if (!database_) throw Errore(kObjectClosed);
}

void SqliteConnection::requireReady() const {
  requireOpen();
  // What follows a rollback by the engine must not be written outside the caller's transaction.
  if (inTransaction_ && sqlite3_get_autocommit(database_.get()) != 0) {
    throw Errore("The transaction has been rolled back by the database and must be ended first");
  }
}

RecordsetPtr SqliteConnection::Execute(std::string_view text) {
  requireReady();
  ++statistics_.executed;
  const tsql::Scan scan = tsql::scan(text);
  auto& plan = planFor(scan);
  if (plan.kind() == Translation::Kind::Identity)
    return engine::identityRow(plan.columns().front().name, lastIdentity_);
  if (plan.kind() == Translation::Kind::Schema) return runSchemaChange(plan, scan);
  if (auto rows = plan.run(scan.literals)) return rows;
  if (plan.insertsIdentity() && sqlite3_changes(database_.get()) > 0) {
    lastIdentity_ = sqlite3_last_insert_rowid(database_.get());
  }
  return std::make_shared<Recordset>();
}

void SqliteConnection::ForEachRow(std::string_view text, const RowVisitor& visit) {
  requireReady();
  const tsql::Scan scan = tsql::scan(text);
  const auto& plan = planFor(scan);
  if (plan.kind() != Translation::Kind::Query || plan.hasStages()) return Connection::ForEachRow(text, visit);
  ++statistics_.executed;
  // Out of the cache while its rows are visited: what the visit runs may drop plans.
  auto own = cache_->take(scan.key);
  own->visit(scan.literals, visit);
  // A visit that ran the same text has left a plan of it.
  if (cache_ && !cache_->find(scan.key)) cache_->insert(scan.key, std::move(own));
}

std::unique_ptr<BulkInsert> SqliteConnection::bulkInsert(std::string_view table,
                                                         const std::vector<std::string_view>& columns) {
  requireReady();
  if (catalog_->outdated()) reloadSchema();
  return insertBound(*this, database_.get(), engine::BulkRow(*catalog_, table, columns));
}

Plan& SqliteConnection::planFor(const tsql::Scan& scan) {
  if (auto* plan = cache_->find(scan.key)) return *plan;
  // Another program may have changed the tables; only a text seen for the first time needs to know.
  if (catalog_->outdated()) reloadSchema();
  return cache_->insert(scan.key, makePlan(scan));
}

std::unique_ptr<Plan> SqliteConnection::makePlan(const tsql::Scan& scan) {
  const std::string prefix = "bk_stage" + std::to_string(++stagePrefixes_) + "_";
  auto plan =
      std::make_unique<Plan>(database_.get(), statistics_, translate(scan, *catalog_, prefix, catalog_->textOrder()));
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

void SqliteConnection::BeginTrans() {
  requireOpen();
  if (inTransaction_) throw Errore("Cannot start more transactions on this session");
  // A restore that was killed leaves the log away. Where others read the file, it stays away for now.
  if (writable_) sqlite3_exec(database_.get(), "PRAGMA journal_mode = WAL", nullptr, nullptr, nullptr);
  // Every transaction here is serialisable, whatever IsolationLevel asks. The write lock is taken at once, so that
  // a second writer waits at its beginning and never fails halfway.
  // Made ahead: what takes back must not need memory when there is none.
  if (!rollback_) rollback_ = prepare(database_.get(), "ROLLBACK", SQLITE_PREPARE_PERSISTENT);
  run(database_.get(), writable_ ? "BEGIN IMMEDIATE" : "BEGIN");
  inTransaction_ = true;
  ++transactions_;
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
  if (sqlite3_get_autocommit(database_.get()) == 0) stepToEnd(database_.get(), rollback_.get());
  inTransaction_ = false;
  forgetRolledBack();
}

/// What was made inside the transaction is gone: stages, and tables if any were.
void SqliteConnection::forgetRolledBack() {
  cache_->removeIf([](const Plan& plan) { return plan.hasStages(); });
  if (schemaChangedInTransaction_) reloadSchema();
  schemaChangedInTransaction_ = false;
}

}  // namespace sqlite
