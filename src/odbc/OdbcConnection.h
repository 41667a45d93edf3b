#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "ado/connection/Connection.h"
#include "odbc/CodePage.h"
#include "odbc/Handle.h"
#include "odbc/Rows.h"

namespace odbc {

/// A connection through an ODBC driver. The text goes to the database unchanged, after a look that it is one
/// statement. The connection string is the driver's own behind the entry "Provider=ODBC".
///
/// When the link is lost nothing of an open transaction stays, and its statements and its commit are refused until it
/// is rolled back. Outside a transaction the connection is made again.
class OdbcConnection : public ado::Connection {
 public:
  ~OdbcConnection() override;

  void Open(std::string_view user = {}, std::string_view password = {}, std::int32_t options = -1) override;
  void Close() override;
  ado::ObjectStateEnum State() const override;
  ado::RecordsetPtr Execute(std::string_view text) override;
  void ForEachRow(std::string_view text, const ado::RowVisitor& visit) override;
  void BeginTrans() override;
  void CommitTrans() override;
  void RollbackTrans() override;
  std::int64_t transaction() const override { return inTransaction_ ? transactions_ : 0; }

 private:
  void requireOpen() const;
  void requireTransaction() const;
  void connect();
  void requireConnected();
  void guarded(std::string_view text, const std::function<void()>& work);
  /// Gives the statement and its number of columns, at its first answer that has some.
  using Reading = std::function<void(const Handle& statement, SQLSMALLINT columns)>;
  void runInto(std::string_view text, const Reading& read) const;
  ado::RecordsetPtr run(std::string_view text) const;
  bool isLost() const;
  bool transactionIsGone() const;
  void beginAnew();
  void leaveTransaction();
  void setAutocommit(bool on);
  void leaveManualMode();
  std::optional<SQLULEN> isolation() const;
  void raiseIsolation();
  void restoreIsolation(std::optional<SQLULEN> level);
  void disconnect();

  std::string user_, password_;
  Handle environment_;
  Handle connection_;
  bool open_ = false;
  bool connected_ = false;
  bool lost_ = false;                    ///< the driver has said that the link is gone
  mutable RowStream* stream_ = nullptr;  ///< whose rows are being visited
  bool inTransaction_ = false;
  std::int64_t transactions_ = 0;  ///< begun until now
  std::optional<CodePage> codePage_;
  std::optional<SQLULEN> usualLevel_;  ///< of the connection, while a transaction has a level of its own
  bool worked_ = false;                ///< a statement of the transaction went well
  bool rolledBack_ = false;            ///< the database ended the transaction; the caller has not yet
};

}  // namespace odbc
