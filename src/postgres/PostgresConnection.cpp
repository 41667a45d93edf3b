#include "postgres/PostgresConnection.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>
#include <vector>

#include "ado/Messages.h"
#include "engine/ResultSet.h"
#include "postgres/ConnectionWords.h"
#include "postgres/CopyInsert.h"
#include "postgres/Parameters.h"
#include "postgres/ServerFunctions.h"
#include "postgres/TriggerTracker.h"
#include "postgres/WriterQueue.h"
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
/// Before a statement that writes outside a transaction.
constexpr const char* kTurn = "bk_turn";
/// So many times a transaction waits for the answer to a statement; so many are sent without.
constexpr int kShortRun = 8;
constexpr int kMostSent = 200;
constexpr const char* kSavepoint = "SAVEPOINT bk";
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
  runSimple(server.get(), waitSetting(words.busyTimeout));
  writes_ = !words.readOnly && Mode != kModeRead;
  if (!writes_) runSimple(server.get(), "SET default_transaction_read_only TO on");
  prepareNamed(server.get(), kRelease, "RELEASE SAVEPOINT bk");
  prepareNamed(server.get(), kSave, kSavepoint);
  prepareNamed(server.get(), kTurn, takeTurn().c_str());
  catalog_.load(server.get());
  server_ = std::move(server);
  lastIdentity_.reset();
}

void PostgresConnection::disconnect() {
  // An open transaction is rolled back by the server, and what was prepared goes with the session.
  auto server = std::move(server_);
  cache_.clear();
  inTransaction_ = rolledBack_ = schemaChangedInTransaction_ = false;
  sent_ = 0;
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
  if (isConnected()) return;
  rolledBack_ = inTransaction_;
  if (rolledBack_) throw Errore(kRolledBack);
  disconnect();
  connect();
}

RecordsetPtr PostgresConnection::Execute(std::string_view text) {
  requireConnected();
  return run(tsql::scan(text));
}

void PostgresConnection::ForEachRow(std::string_view text, const RowVisitor& visit) {
  requireConnected();
  const auto scan = tsql::scan(text);
  auto* plan = &planOf(scan);
  if (plan->translation().kind != Translation::Kind::Query) return Connection::ForEachRow(text, visit);
  const auto result = answer(plan, scan);
  // Its own: what the visit runs may drop plans.
  RowReader reader(plan->translation().columns);
  reader.readEach(result.get(), visit);
}

/// Whether it is a statement whose answer is not waited for any more.
bool PostgresConnection::isRepeated(const Plan& plan) const {
  return inTransaction_ && plan.translation().kind == Translation::Kind::Change &&
         plan.runs(transactions_) >= kShortRun;
}

/// Waits first for what was sent without waiting, unless the text goes on with it.
Plan& PostgresConnection::planOf(const tsql::Scan& scan) {
  auto* plan = cache_.find(scan.key);
  if (!plan || !isRepeated(*plan)) settle();
  return plan ? *plan : planFor(scan);
}

RecordsetPtr PostgresConnection::run(const tsql::Scan& scan) {
  using Kind = Translation::Kind;
  auto* plan = &planOf(scan);
  if (plan->translation().kind == Kind::Identity)
    return engine::identityRow(plan->translation().columns.front().name, lastIdentity_);
  if (plan->translation().kind == Kind::Schema) {
    changeSchema(std::string(plan->translation().sql));
    return std::make_shared<Recordset>();
  }
  const auto result = answer(plan, scan);
  if (!result) return std::make_shared<Recordset>();
  if (plan->translation().kind == Kind::Query) return plan->reader().readAll(result.get());
  return std::make_shared<Recordset>();
}

/// What the server answers, with a plan made anew where the tables have changed; null when it is not waited for.
Result PostgresConnection::answer(Plan*& plan, const tsql::Scan& scan) {
  auto result = execute(*plan, scan);
  if (!result) return nullptr;
  if (!succeeded(result->get()) && isStale(result->get())) {
    // Another program has changed the tables.
    if (inTransaction_) runSimple(server_.get(), kBackToSavepoint);
    reloadSchema();
    plan = &planFor(scan);
    result = execute(*plan, scan);
    if (!result) return nullptr;
  }
  if (!succeeded(result->get())) fail(result->get());
  return std::move(*result);
}

Plan& PostgresConnection::planFor(const tsql::Scan& scan) {
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

/// @return nothing for a statement whose answer is not waited for; a null answer is a failure.
std::optional<Result> PostgresConnection::execute(Plan& plan, const tsql::Scan& scan) {
  const Parameters parameters(plan.translation().parameters, scan.literals);
  if (plan.plannedEachTime())
    return Result(PQexecParams(server_.get(), plan.translation().sql.c_str(), parameters.count(), plan.types(),
                               parameters.values(), nullptr, nullptr, 0));
  if (plan.translation().kind != Translation::Kind::Change)
    return Result(PQexecPrepared(server_.get(), plan.name().c_str(), parameters.count(), parameters.values(), nullptr,
                                 nullptr, 0));
  if (!inTransaction_) return runInTurn(plan, parameters.values());
  const bool repeated = isRepeated(plan);
  plan.countRun(transactions_);
  send(plan, parameters.values());
  if (!repeated) return collect();
  if (sent_ >= kMostSent) settle();
  return std::nullopt;
}

/// The turn and the statement in one message, which the server takes for one transaction.
Result PostgresConnection::runInTurn(const Plan& plan, const char* const* values) {
  PQenterPipelineMode(server_.get());
  PQsendQueryPrepared(server_.get(), kTurn, 0, nullptr, nullptr, nullptr, 0);
  sent_ = 1;
  send(plan, values);
  return collect();
}

void PostgresConnection::send(const Plan& plan, const char* const* values) {
  auto* server = server_.get();
  if (sent_++ == 0) PQenterPipelineMode(server);
  const auto count = static_cast<int>(plan.translation().parameters.size());
  PQsendQueryPrepared(server, plan.name().c_str(), count, values, nullptr, nullptr, 0);
}

/// The answer to the last statement that was sent, or the first that is a failure: what follows one the server does
/// not do. The savepoint moves behind them in the same message.
Result PostgresConnection::collect() {
  auto* server = server_.get();
  if (inTransaction_) {
    PQsendQueryPrepared(server, kRelease, 0, nullptr, nullptr, nullptr, 0);
    PQsendQueryPrepared(server, kSave, 0, nullptr, nullptr, nullptr, 0);
  }
  PQpipelineSync(server);
  Result answer;
  int statements = std::exchange(sent_, 0);
  for (bool done = false; !done && PQstatus(server) == CONNECTION_OK;) {
    Result each(PQgetResult(server));
    done = each && PQresultStatus(each.get()) == PGRES_PIPELINE_SYNC;
    if (!each || done || statements == 0) continue;
    --statements;
    if (!succeeded(each.get())) statements = 0;
    keepIdentity(each.get());
    answer = std::move(each);
  }
  PQexitPipelineMode(server);
  return answer;
}

/// Waits for what was sent without waiting.
void PostgresConnection::settle() {
  if (sent_ == 0) return;
  const Result answer = collect();
  if (succeeded(answer.get())) return;
  // Which statements of the run would have to be done again nobody knows any more.
  const auto description = describeFailure(server_.get(), answer.get());
  rolledBack_ = true;
  if (PQstatus(server_.get()) == CONNECTION_OK) const Result back(PQexec(server_.get(), "ROLLBACK"));
  throw Errore(description);
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
  settle();
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

/// Every transaction that writes has a number, and shows here from then until it ends.
std::string PostgresConnection::commitMark() {
  const auto result = runBeside("SELECT pg_current_snapshot()", {});
  return PQgetvalue(result.get(), 0, 0);
}

/// Every transaction with a lesser number has ended; those that have not, and those to come, have this one or a
/// greater.
std::int64_t PostgresConnection::rowMark() {
  const auto result = runBeside("SELECT pg_snapshot_xmin(pg_current_snapshot())");
  return std::stoll(PQgetvalue(result.get(), 0, 0));
}

/// A row has the lower half of the number of what wrote it, which is told apart from others by its age; that of rows
/// which are older than half of all numbers is negative.
std::vector<std::int64_t> PostgresConnection::rowsSince(std::string_view table, std::string_view key,
                                                        std::int64_t mark) {
  const auto behind = rowMark() - mark;
  const std::string rows = "SELECT " + storedName(key) + "::bigint FROM " + sqlName(table);
  // Of a moment too far away, or of another database, all of them may be younger.
  const bool isNear = behind >= 0 && behind < INT32_MAX;
  const auto result = isNear ? runBeside(rows + " WHERE age(xmin) BETWEEN 0 AND age($1::xid)",
                                         {std::to_string(static_cast<std::uint32_t>(mark))})
                             : runBeside(rows);
  std::vector<std::int64_t> keys;
  for (int row = 0; row < PQntuples(result.get()); ++row) keys.push_back(std::stoll(PQgetvalue(result.get(), row, 0)));
  return keys;
}

Result PostgresConnection::runBeside(const std::string& sql, const std::vector<std::string>& parameters) {
  requireConnected();
  settle();
  std::vector<const char*> values;
  for (const auto& parameter : parameters) values.push_back(parameter.c_str());
  Result result(PQexecParams(server_.get(), sql.c_str(), static_cast<int>(values.size()), nullptr, values.data(),
                             nullptr, nullptr, 0));
  if (!succeeded(result.get())) fail(result.get());
  advance();
  return result;
}

std::unique_ptr<BulkInsert> PostgresConnection::bulkInsert(std::string_view table,
                                                           const std::vector<std::string_view>& columns) {
  requireConnected();
  settle();
  if (catalog_.outdated(server_.get())) reloadSchema();
  return insertByCopy(*this, engine::BulkRow(catalog_, table, columns));
}

void PostgresConnection::copyIn(const std::string& sql, std::string_view rows) {
  requireConnected();
  settle();
  auto* server = server_.get();
  const auto whole = inTransaction_ ? sql : takeTurn() + "; " + sql;
  Result answer(PQexec(server, whole.c_str()));
  if (PQresultStatus(answer.get()) != PGRES_COPY_IN) fail(answer.get());
  // A failure to send is told by the answer.
  PQputCopyData(server, rows.data(), static_cast<int>(rows.size()));
  PQputCopyEnd(server, nullptr);
  answer.reset(PQgetResult(server));
  while (const Result rest{PQgetResult(server)}) {
  }
  if (!succeeded(answer.get())) fail(answer.get());
  advance();
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
  if (inTransaction_) {
    const bool lost = PQstatus(server_.get()) != CONNECTION_OK;
    rolledBack_ = lost || isCollision(failureCode(result));
    if (!lost) {
      const Result back(PQexec(server_.get(), rolledBack_ ? "ROLLBACK" : kBackToSavepoint));
      rolledBack_ = rolledBack_ || !succeeded(back.get());
    }
  }
  throw Errore(describeFailure(server_.get(), result));
}

/// Of what writes, only an insert into a table with an identity gives columns.
void PostgresConnection::keepIdentity(const PGresult* result) {
  const int rows = PQntuples(result);
  if (rows == 0 || PQnfields(result) == 0 || PQgetisnull(result, rows - 1, 0) != 0) return;
  const auto text = cell(result, rows - 1, 0);
  std::int64_t identity = 0;
  std::from_chars(text.data(), text.data() + text.size(), identity);
  lastIdentity_ = identity;
}

void PostgresConnection::BeginTrans() {
  if (inTransaction_) throw Errore("Cannot start more transactions on this session");
  requireConnected();
  const std::string begin = IsolationLevel == adXactSerializable ? "BEGIN ISOLATION LEVEL SERIALIZABLE" : "BEGIN";
  if (writes_)
    beginInTurn(server_.get(), begin, kSavepoint);
  else
    runSimple(server_.get(), begin + "; " + kSavepoint);
  inTransaction_ = true;
  ++transactions_;
  schemaChangedInTransaction_ = false;
}

void PostgresConnection::requireTransaction() const {
  requireOpen();
  if (!inTransaction_) throw Errore("No transaction is active");
}

void PostgresConnection::CommitTrans() {
  requireTransaction();
  if (rolledBack_) throw Errore(kRolledBack);
  settle();
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
  // Whatever the answers are, nothing of it stays.
  if (sent_ > 0 && PQstatus(server_.get()) == CONNECTION_OK) collect();
  const bool gone = std::exchange(rolledBack_, false);
  inTransaction_ = false;
  if (PQstatus(server_.get()) != CONNECTION_OK) return disconnect();
  if (!gone) runSimple(server_.get(), "ROLLBACK");
  if (std::exchange(schemaChangedInTransaction_, false)) reloadSchema();
}

}  // namespace postgres
