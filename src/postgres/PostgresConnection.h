#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ado/connection/Connection.h"
#include "engine/StatementCache.h"
#include "postgres/Handle.h"
#include "postgres/Plan.h"
#include "postgres/SchemaCatalog.h"
#include "tsql/Lexer.h"

namespace postgres {

/// A connection to a PostgreSQL server. It takes SQL Server's text and gives SQL Server's results. The connection
/// string is told in ConnectionWords.h.
///
/// A statement that fails inside a transaction takes nothing else with it, as SQL Server has it: a savepoint stands
/// behind the last statement that wrote. Only of a statement that a transaction runs again and again with other values
/// answers are not waited for from the ninth on: a failure among these is told by a later call and takes the whole
/// transaction back. When the server gives up a transaction because of what others do, or the
/// connection is lost, nothing of it stays and its statements and its commit are refused until it is rolled back.
/// Outside a transaction a connection that was lost is made again.
///
/// Transactions, and statements that write outside of one, take their turn: see WriterQueue.h.
class PostgresConnection : public ado::Connection {
 public:
  PostgresConnection() = default;
  ~PostgresConnection() override;

  void Open(std::string_view user = {}, std::string_view password = {}, std::int32_t options = -1) override;
  void Close() override;
  ado::ObjectStateEnum State() const override;
  ado::RecordsetPtr Execute(std::string_view text) override;
  /// The server's answer is held while its rows are visited, but no record set of them.
  void ForEachRow(std::string_view text, const ado::RowVisitor& visit) override;
  std::unique_ptr<ado::BulkInsert> bulkInsert(std::string_view table,
                                              const std::vector<std::string_view>& columns) override;
  void BeginTrans() override;
  void CommitTrans() override;
  void RollbackTrans() override;
  std::int64_t transaction() const override { return inTransaction_ ? transactions_ : 0; }

  ado::ChangeTracker* changes() override;
  std::string commitMark() override;
  std::int64_t rowMark() override;
  std::vector<std::int64_t> rowsSince(std::string_view table, std::string_view key, std::int64_t mark) override;

  /// Runs one of the provider's own statements, in the transaction that is open.
  Result runBeside(const std::string& sql, const std::vector<std::string>& parameters = {});
  /// Sends rows in the text form of COPY … FROM STDIN, the statement that is given.
  void copyIn(const std::string& sql, std::string_view rows);
  /// Makes the functions that statements call where the server lacks them, or has those of an older program.
  void ensureFunctions();
  bool isConnected() const { return server_ && PQstatus(server_.get()) == CONNECTION_OK; }
  const SchemaCatalog& catalog() const { return catalog_; }

  std::size_t cachedPlans() const { return cache_.size(); }

 private:
  void connect();
  void disconnect();
  void requireOpen() const;
  void requireConnected();
  void requireTransaction() const;
  Plan& planFor(const tsql::Scan& scan);
  Plan& planOf(const tsql::Scan& scan);
  ado::RecordsetPtr run(const tsql::Scan& scan);
  Result answer(Plan*& plan, const tsql::Scan& scan);
  bool isRepeated(const Plan& plan) const;
  std::optional<Result> execute(Plan& plan, const tsql::Scan& scan);
  Result runInTurn(const Plan& plan, const char* const* values);
  void send(const Plan& plan, const char* const* values);
  Result collect();
  void settle();
  void changeSchema(const std::string& sql);
  void advance();
  void reloadSchema();
  void keepIdentity(const PGresult* result);
  bool isStale(const PGresult* result) const;
  [[noreturn]] void fail(const PGresult* result);

  std::string user_, password_;
  Server server_;
  SchemaCatalog catalog_;
  engine::StatementCache<Plan> cache_{256};  ///< more than the distinct statements of the whole system
  std::unique_ptr<ado::ChangeTracker> tracker_;
  std::optional<std::int64_t> lastIdentity_;
  int sent_ = 0;                   ///< statements whose answers are still to come
  long names_ = 0;                 ///< of prepared statements
  std::int64_t transactions_ = 0;  ///< begun until now
  bool open_ = false;
  bool writes_ = true;  ///< false with Mode=Read
  bool inTransaction_ = false;
  bool rolledBack_ = false;  ///< the server ended the transaction; the caller has not yet
  bool schemaChangedInTransaction_ = false;
};

}  // namespace postgres
