#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ado/connection/Connection.h"
#include "engine/StatementCache.h"
#include "sqlite/Handle.h"
#include "sqlite/Plan.h"
#include "sqlite/SchemaCatalog.h"
#include "tsql/Lexer.h"

namespace sqlite {

/// A connection to an embedded database, one file. It takes SQL Server's text and gives SQL Server's results.
///
/// Entries of the connection string:
///   Data Source=FILE   the database; ":memory:" for one that lives with the connection
///   Create=True        make the file when it does not exist or is empty (otherwise either is an error)
///   Mode=Read          open for reading only
///   Busy Timeout=5     how many seconds, 0 to 600, to wait for another program that writes
///   Synchronous=Full   what is committed outlives a power failure. Normal: the file stays whole, but may lack the last
///                      commits. Off: a power failure may damage it
///
/// The file keeps a write-ahead log: a process killed in the middle of a transaction leaves nothing of it, and what
/// was committed stays.
class SqliteConnection : public ado::Connection {
 public:
  SqliteConnection() = default;
  ~SqliteConnection() override;

  void Open(std::string_view user = {}, std::string_view password = {}, std::int32_t options = -1) override;
  void Close() override;
  ado::ObjectStateEnum State() const override;
  ado::RecordsetPtr Execute(std::string_view text) override;
  void ForEachRow(std::string_view text, const ado::RowVisitor& visit) override;
  std::unique_ptr<ado::BulkInsert> bulkInsert(std::string_view table,
                                              const std::vector<std::string_view>& columns) override;
  void BeginTrans() override;
  void CommitTrans() override;
  /// Also ends a transaction that the engine has already rolled back by itself.
  void RollbackTrans() override;
  std::int64_t transaction() const override { return inTransaction_ ? transactions_ : 0; }
  ado::ChangeTracker* changes() override;
  std::string commitMark() override;
  /// Of a file with a log (WAL), where readers and the writer do not wait for each other.
  ado::ConnectionPtr reader() override;

  Statistics statistics() const { return statistics_; }
  std::size_t cachedPlans() const { return cache_ ? cache_->size() : 0; }

  /// Throws when no statement may run now.
  void requireReady() const;

 private:
  void requireOpen() const;
  Plan& planFor(const tsql::Scan& scan);
  std::unique_ptr<Plan> makePlan(const tsql::Scan& scan);
  ado::RecordsetPtr runSchemaChange(Plan& plan, const tsql::Scan& scan);
  void reloadSchema();
  void forgetRolledBack();

  Database database_;
  Prepared rollback_;
  std::optional<SchemaCatalog> catalog_;
  std::optional<StatementCache<Plan>> cache_;
  std::unique_ptr<ado::ChangeTracker> tracker_;
  Statistics statistics_;
  std::optional<std::int64_t> lastIdentity_;
  long stagePrefixes_ = 0;
  bool writable_ = false;
  bool inTransaction_ = false;
  std::int64_t transactions_ = 0;  ///< begun until now
  bool schemaChangedInTransaction_ = false;
};

}  // namespace sqlite
