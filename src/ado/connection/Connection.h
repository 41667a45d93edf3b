#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "ado/Types.h"
#include "ado/connection/BulkInsert.h"
#include "ado/connection/ChangeTracker.h"
#include "ado/recordset/Recordset.h"
#include "values/Export.h"

namespace ado {

/// Says what is done with the rows of a query. It is given, once, the set that will hold one row after the other, to
/// look up its fields; what it gives back is called for each row. Fields that it has not looked up then are not read,
/// and cannot be looked up later.
using RowVisitor = std::function<std::function<void()>(const Recordset& row)>;

/// A database connection. Text is SQL Server's; one call runs one statement (IF … BEGIN … END counts as one).
/// Every failure throws values::Errore with the database's description.
class BUKORVAL_API Connection : public values::Object {
 public:
  std::string ConnectionString;
  std::int32_t CursorLocation = adUseServer;
  std::int32_t Mode = 0;
  std::int32_t IsolationLevel = 0;

  virtual void Open(std::string_view user = {}, std::string_view password = {}, std::int32_t options = -1) = 0;
  virtual void Close() = 0;
  virtual ObjectStateEnum State() const = 0;

  /// Runs one statement. A query gives its rows as an open set on its first row; any other statement a closed set.
  /// After an insert into a table with an identity column, SELECT @@IDENTITY on the same connection gives the
  /// new identity.
  virtual RecordsetPtr Execute(std::string_view text) = 0;

  /// Runs a query and visits its rows as they come: none is kept, so that it takes no more memory for many rows than
  /// for few, and an ORDER BY counts for nothing. The visit may run other queries, but leaves the connection open and
  /// the tables' definitions as they are.
  virtual void ForEachRow(std::string_view text, const RowVisitor& visit);

  /// Throws values::Errore when there is no such table or column, at once or with the first row.
  virtual std::unique_ptr<BulkInsert> bulkInsert(std::string_view table, const std::vector<std::string_view>& columns);

  virtual void BeginTrans() = 0;
  virtual void CommitTrans() = 0;
  virtual void RollbackTrans() = 0;
  /// Tells the transaction that is open from every other one of this connection. 0 when none is, and for a connection
  /// that does not tell.
  virtual std::int64_t transaction() const { return 0; }

  /// Null for an engine that keeps no track, and before Open.
  virtual ChangeTracker* changes() { return nullptr; }

  /// As long as it stays the same on one connection, no other one has committed anything in between. Outside a
  /// transaction. "" for an engine that does not tell.
  virtual std::string commitMark() { return {}; }

  /// A moment for rowsSince: whatever is committed from now on is told from it. 0 for an engine whose rows do not tell
  /// when they were written. Outside a transaction.
  virtual std::int64_t rowMark() { return 0; }
  /// The whole-number keys of the rows of a table that were committed since, whoever wrote them and whenever they began
  /// to; some that were committed before may be among them. Rows that are gone are not. Reads the whole table.
  virtual std::vector<std::int64_t> rowsSince(std::string_view table, std::string_view key, std::int64_t mark);

  /// A connection of its own, for another thread, that reads what was committed before this one's transaction while
  /// that goes on. Null for an engine that has none, or lets nobody read meanwhile.
  virtual std::shared_ptr<Connection> reader() { return nullptr; }
};

using ConnectionPtr = std::shared_ptr<Connection>;

/// Providers make themselves known by name; a connection string chooses one with its entry Provider.
/// @param entries  entries that only this provider knows: a string that has one of them and no Provider is meant for
/// it.
BUKORVAL_API void registerProvider(std::string_view name, std::function<ConnectionPtr()> create,
                                   std::vector<std::string> entries = {});
/// A closed connection that, on Open, becomes one of the provider its ConnectionString names.
/// Throws for an unknown provider, and says which are known.
BUKORVAL_API ConnectionPtr createConnection();

}  // namespace ado
