#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "ado/connection/Connection.h"
#include "odbc/CodePage.h"
#include "odbc/Handle.h"

namespace odbc {

/// A connection through an ODBC driver. The text goes to the database unchanged, after a look that it is one
/// statement. The connection string is the driver's own behind the entry "Provider=ODBC".
class OdbcConnection : public ado::Connection {
 public:
  ~OdbcConnection() override;

  void Open(std::string_view user = {}, std::string_view password = {}, std::int32_t options = -1) override;
  void Close() override;
  ado::ObjectStateEnum State() const override;
  ado::RecordsetPtr Execute(std::string_view text) override;
  void BeginTrans() override;
  void CommitTrans() override;
  void RollbackTrans() override;

 private:
  void requireOpen() const;
  void requireTransaction() const;
  ado::RecordsetPtr run(std::string_view text) const;
  bool transactionIsGone() const;
  void beginAnew();
  void leaveTransaction();
  void setAutocommit(bool on);
  void leaveManualMode();
  std::optional<SQLULEN> isolation() const;
  void raiseIsolation();
  void restoreIsolation(std::optional<SQLULEN> level);
  void disconnect();

  Handle environment_;
  Handle connection_;
  bool connected_ = false;
  bool inTransaction_ = false;
  std::optional<CodePage> codePage_;
  std::optional<SQLULEN> usualLevel_;  ///< of the connection, while a transaction has a level of its own
  bool worked_ = false;                ///< a statement of the transaction went well
  bool rolledBack_ = false;            ///< the database ended the transaction; the caller has not yet
};

}  // namespace odbc
