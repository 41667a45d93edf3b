#include "postgres/PostgresConnection.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>
#include <vector>

#include "ado/Messages.h"
#include "engine/ResultSet.h"
#include "postgres/ConnectionWords.h"
#include "postgres/Parameters.h"
#include "postgres/ServerFunctions.h"
#include "postgres/TriggerTracker.h"
#include "values/Errore.h"

namespace postgres {

using namespace ado;

namespace {

using values::Errore;

constexpr std::int32_t kModeRead = 1;
constexpr const char* kRolledBack = "The transaction has been rolled back by the database and must be ended first";

constexpr const char* kSettings =
    "SET DateStyle TO ISO; SET standard_conforming_strings TO on; SET client_min_messages TO warning; SET jit TO off; "
    "SET extra_float_digits TO 1";

/// A savepoint that moves behind each statement that has written.
constexpr const char* kRelease = "bk_release";
constexpr const char* kSave = "bk_save";
constexpr const char* kBackToSavepoint = "ROLLBACK TO SAVEPOINT bk";

void prepareNamed(PGconn* server, const char* name, const char* sql) {
  const Result result(PQprepare(server, name, sql, 0, nullptr));
  if (!succeeded(result.get())) throw Errore(describeFailure(server, result.get()));
}

/// A commit that the server turned into a rollback says so.
bool isRollback(PGresult* result) { return std::string_view(PQcmdStatus(result)) == "ROLLBACK"; }

}  // namespace

PostgresConnection::~PostgresConnection() { disconnect(); }

void PostgresConnection::Open(std::string_view user, std::string_view password, std::int32_t) {
  if (open_) throw Errore(kObjectOpen);
  user_ = user;
  password_ = password;
  connect();
  open_ = true;
}

void PostgresConnection::connect() {
  const auto words = wordsOf(ConnectionString, user_, password_);
  std::vector<const char*> names, values;
  for (std::size_t i = 0; i < words.names.size(); ++i) {
    names.push_back(words.names[i].c_str());
    values.push_back(words.values[i].c_str());
  }
  names.push_back(nullptr);
  values.push_back(nullptr);
  Server server(PQconnectdbParams(names.data(), values.data(), 0));
  if (!server) throw Errore("Out of memory");
  if (PQstatus(server.get()) != CONNECTION_OK) {
    throw Errore("Cannot connect to PostgreSQL: " + connectionFailure(server.get()));
  }
  PQsetNoticeProcessor(
      server.get(), [](void*, const char*) {}, nullptr);
  runSimple(server.get(), kSettings);
  if (words.readOnly || Mode == kModeRead) runSimple(server.get(), "SET default_transaction_read_only TO on");
  prepareNamed(server.get(), kRelease, "RELEASE SAVEPOINT bk");
  prepareNamed(server.get(), kSave, "SAVEPOINT bk");
  catalog_.load(server.get());
  server_ = std::move(server);
  lastIdentity_.reset();
}

void PostgresConnection::disconnect() {
  // An open transaction is rolled back by the server, and what was prepared goes with the session.
  auto server = std::move(server_);
  cache_.clear();
  inTransaction_ = rolledBack_ = schemaChangedInTransaction_ = false;
}

void PostgresConnection::Close() {
  requireOpen();
  tracker_.reset();
  disconnect();
  open_ = false;
}

ObjectStateEnum PostgresConnection::State() const { return open_ ? adStateOpen : adStateClosed; }

void PostgresConnection::requireOpen() const {
  if (!open_) throw Errore(kObjectClosed);
}

/// Connects again when the connection was lost; not in the middle of a transaction.
void PostgresConnection::requireConnected() {
  requireOpen();
  if (rolledBack_) throw Errore(kRolledBack);
  if (server_ && PQstatus(server_.get()) == CONNECTION_OK) return;
  disconnect();
  connect();
}

RecordsetPtr PostgresConnection::Execute(std::string_view text) {
  requireConnected();
  return run(tsql::scan(text));
}

RecordsetPtr PostgresConnection::run(const tsql::Scan& scan) {
  using Kind = Translation::Kind;
  auto* plan = &planFor(scan);
  if (plan->translation().kind == Kind::Identity)
    return engine::identityRow(plan->translation().columns.front().name, lastIdentity_);
  if (plan->translation().kind == Kind::Schema) {
    changeSchema(std::string(plan->translation().sql));
    return std::make_shared<Recordset>();
  }
  auto result = execute(*plan, scan);
  if (!succeeded(result.get()) && isStale(result.get())) {
    // Another program has changed the tables.
    if (inTransaction_) runSimple(server_.get(), kBackToSavepoint);
    reloadSchema();
    plan = &planFor(scan);
    result = execute(*plan, scan);
  }
  if (!succeeded(result.get())) fail(result.get());
  if (plan->translation().kind == Kind::Query) return plan->reader().readAll(result.get());
  if (plan->translation().insertsIdentity) keepIdentity(result.get());
  return std::make_shared<Recordset>();
}

Plan& PostgresConnection::planFor(const tsql::Scan& scan) {
  if (auto* plan = cache_.find(scan.key)) return *plan;
  // Another program may have changed the tables; only a text seen for the first time needs to know.
  if (catalog_.outdated(server_.get())) reloadSchema();
  auto translation = translate(scan, catalog_);
  std::unique_ptr<Plan> plan;
  try {
    plan = std::make_unique<Plan>(server_.get(), std::move(translation), "bk_" + std::to_string(++names_));
  } catch (const Errore&) {
    if (PQstatus(server_.get()) != CONNECTION_OK)
      rolledBack_ = inTransaction_;
    else if (inTransaction_)
      runSimple(server_.get(), kBackToSavepoint);
    throw;
  }
  return cache_.insert(scan.key, std::move(plan));
}

Result PostgresConnection::execute(const Plan& plan, const tsql::Scan& scan) {
  const Parameters parameters(plan.translation().parameters, scan.literals);
  if (inTransaction_ && plan.translation().kind == Translation::Kind::Change)
    return executeAndAdvance(plan, parameters.values());
  return Result(
      PQexecPrepared(server_.get(), plan.name().c_str(), parameters.count(), parameters.values(), nullptr, nullptr, 0));
}

/// The statement and the steps of the savepoint behind it, in one message. Of an answer that is a failure the server
/// does not do what follows.
Result PostgresConnection::executeAndAdvance(const Plan& plan, const char* const* values) {
  auto* server = server_.get();
  const auto count = static_cast<int>(plan.translation().parameters.size());
  PQenterPipelineMode(server);
  PQsendQueryPrepared(server, plan.name().c_str(), count, values, nullptr, nullptr, 0);
  PQsendQueryPrepared(server, kRelease, 0, nullptr, nullptr, nullptr, 0);
  PQsendQueryPrepared(server, kSave, 0, nullptr, nullptr, nullptr, 0);
  PQpipelineSync(server);
  Result first;
  for (bool done = false; !done && PQstatus(server) == CONNECTION_OK;) {
    Result each(PQgetResult(server));
    done = each && PQresultStatus(each.get()) == PGRES_PIPELINE_SYNC;
    if (each && !done && !first) first = std::move(each);
  }
  PQexitPipelineMode(server);
  return first;
}

/// No plan outlives a change of the tables, its own included.
void PostgresConnection::changeSchema(const std::string& sql) {
  ensureFunctions();
  const Result result(PQexec(server_.get(), sql.c_str()));
  if (!succeeded(result.get())) fail(result.get());
  advance();
  schemaChangedInTransaction_ = inTransaction_;
  reloadSchema();
}

void PostgresConnection::ensureFunctions() {
  requireConnected();
  if (catalog_.hasFunctions()) return;
  const Result result(PQexec(server_.get(), serverFunctions().c_str()));
  if (!succeeded(result.get())) fail(result.get());
  advance();
  schemaChangedInTransaction_ = inTransaction_;
  reloadSchema();
}

void PostgresConnection::advance() {
  if (inTransaction_) runSimple(server_.get(), "RELEASE SAVEPOINT bk; SAVEPOINT bk");
}

ChangeTracker* PostgresConnection::changes() {
  if (open_ && !tracker_) tracker_ = makeTriggerTracker(*this);
  return tracker_.get();
}

Result PostgresConnection::runBeside(const std::string& sql, const std::vector<std::string>& parameters) {
  requireConnected();
  std::vector<const char*> values;
  for (const auto& parameter : parameters) values.push_back(parameter.c_str());
  Result result(PQexecParams(server_.get(), sql.c_str(), static_cast<int>(values.size()), nullptr, values.data(),
                             nullptr, nullptr, 0));
  if (!succeeded(result.get())) fail(result.get());
  advance();
  return result;
}

void PostgresConnection::reloadSchema() {
  cache_.clear();
  catalog_.load(server_.get());
}

bool PostgresConnection::isStale(const PGresult* result) const {
  constexpr std::array<std::string_view, 4> kCodes{"0A000", "42703", "42P01", "42883"};
  return std::ranges::find(kCodes, failureCode(result)) != kCodes.end();
}

void PostgresConnection::fail(const PGresult* result) {
  const auto description = describeFailure(server_.get(), result);
  if (inTransaction_) {
    const bool lost = PQstatus(server_.get()) != CONNECTION_OK;
    rolledBack_ = lost || isCollision(failureCode(result));
    if (!lost) {
      const Result back(PQexec(server_.get(), rolledBack_ ? "ROLLBACK" : kBackToSavepoint));
      rolledBack_ = rolledBack_ || !succeeded(back.get());
    }
  }
  throw Errore(description);
}

void PostgresConnection::keepIdentity(const PGresult* result) {
  const int rows = PQntuples(result);
  if (rows == 0 || PQgetisnull(result, rows - 1, 0) != 0) return;
  const auto text = cell(result, rows - 1, 0);
  std::int64_t identity = 0;
  std::from_chars(text.data(), text.data() + text.size(), identity);
  lastIdentity_ = identity;
}

void PostgresConnection::BeginTrans() {
  if (inTransaction_) throw Errore("Cannot start more transactions on this session");
  requireConnected();
  runSimple(server_.get(), std::string("BEGIN") +
                               (IsolationLevel == adXactSerializable ? " ISOLATION LEVEL SERIALIZABLE" : "") +
                               "; SAVEPOINT bk");
  inTransaction_ = true;
  schemaChangedInTransaction_ = false;
}

void PostgresConnection::requireTransaction() const {
  requireOpen();
  if (!inTransaction_) throw Errore("No transaction is active");
}

void PostgresConnection::CommitTrans() {
  requireTransaction();
  if (rolledBack_) throw Errore(kRolledBack);
  const Result result(PQexec(server_.get(), "COMMIT"));
  if (!succeeded(result.get())) {
    // What was not kept is gone, whoever asks.
    rolledBack_ = true;
    throw Errore(describeFailure(server_.get(), result.get()));
  }
  rolledBack_ = isRollback(result.get());
  if (rolledBack_) throw Errore(kRolledBack);
  inTransaction_ = false;
}

void PostgresConnection::RollbackTrans() {
  requireTransaction();
  const bool gone = std::exchange(rolledBack_, false);
  inTransaction_ = false;
  if (PQstatus(server_.get()) != CONNECTION_OK) return disconnect();
  if (!gone) runSimple(server_.get(), "ROLLBACK");
  if (std::exchange(schemaChangedInTransaction_, false)) reloadSchema();
}

}  // namespace postgres
