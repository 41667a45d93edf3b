#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>
#include <string_view>

namespace sqlite {

struct CloseDatabase {
  void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
struct FinalizeStatement {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Database = std::unique_ptr<sqlite3, CloseDatabase>;
using Prepared = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

/// Opens a file as it is. Throws values::Errore with the reason.
/// @param flags  the engine's, SQLITE_OPEN_…
Database open(const std::string& file, int flags);

/// The engine's last failure in a user's words: the table and column of a broken constraint, who holds the file.
std::string describeFailure(sqlite3* database);
[[noreturn]] void throwFailure(sqlite3* database);

Prepared prepare(sqlite3* database, std::string_view sql, unsigned flags = 0);

/// Runs a fixed text that has no parameters and gives no rows worth reading.
void run(sqlite3* database, const char* sql);

/// Steps a statement that gives no rows worth reading to its end and resets it, failed or not.
void stepToEnd(sqlite3* database, sqlite3_stmt* statement);

/// Resets a statement when the scope ends: a statement left on a row would hold its lock on the file.
class ResetAtEnd {
 public:
  explicit ResetAtEnd(sqlite3_stmt* statement) : statement_(statement) {}
  ~ResetAtEnd() { sqlite3_reset(statement_); }
  ResetAtEnd(const ResetAtEnd&) = delete;
  ResetAtEnd& operator=(const ResetAtEnd&) = delete;

 private:
  sqlite3_stmt* statement_;
};

}  // namespace sqlite
