#include "sqlite/Handle.h"

#include <system_error>

#include "sqlite/file/LockHolder.h"
#include "values/Errore.h"
#include "values/FileName.h"

namespace sqlite {
namespace {

/// "TABLE.COLUMN, TABLE.COLUMN" from "NOT NULL constraint failed: TABLE.COLUMN".
std::string_view subject(std::string_view message) {
  const auto colon = message.find(": ");
  return colon == std::string_view::npos ? std::string_view() : message.substr(colon + 2);
}

std::string describeNull(std::string_view where) {
  const auto point = where.find('.');
  if (point == std::string_view::npos) return "Cannot insert the value NULL";
  return "Cannot insert the value NULL into column '" + std::string(where.substr(point + 1)) + "', table '" +
         std::string(where.substr(0, point)) + "'; column does not allow nulls";
}

/// Who holds the file, and how long this connection has waited for it. Like what a server says of other users, in the
/// language of the object: its clients show it as it is.
std::string describeBusy(sqlite3* database) {
  const char* file = sqlite3_db_filename(database, "main");
  const auto holder = file == nullptr ? std::string() : lockHolder(file, Holding::ForWriting);
  std::string text = "Il database è in uso da parte di " + (holder.empty() ? "un altro programma" : holder);
  const auto setting = prepare(database, "PRAGMA busy_timeout");
  const auto seconds = sqlite3_step(setting.get()) == SQLITE_ROW ? sqlite3_column_int(setting.get(), 0) / 1000 : 0;
  if (seconds > 0) text += "; atteso " + std::to_string(seconds) + " s";
  return text;
}

/// What remains of an extended code.
constexpr int kPrimaryCode = 0xff;

/// The system's last error on the log or the journal, 0 when there is none.
int lastErrorOfLog(sqlite3* database) {
  sqlite3_file* log = nullptr;
  int reason = 0;
  if (sqlite3_file_control(database, "main", SQLITE_FCNTL_JOURNAL_POINTER, &log) == SQLITE_OK && log && log->pMethods)
    log->pMethods->xFileControl(log, SQLITE_FCNTL_LAST_ERRNO, &reason);
  return reason;
}

/// The engine's text says little when the system refused something; and it forgets the reason of a failed commit.
std::string withSystemReason(sqlite3* database, const char* text) {
  int reason = sqlite3_system_errno(database);
  if (reason == 0) reason = lastErrorOfLog(database);
  return reason == 0 ? std::string(text) + " (" + sqlite3_errmsg(database) + ")"
                     : std::string(text) + ": " + std::system_category().message(reason);
}

}  // namespace

Database open(const std::string& file, int flags) {
  // What begins with a root or a point is the name of a file to the engine, whatever follows.
  const bool name = (flags & (SQLITE_OPEN_URI | SQLITE_OPEN_MEMORY)) == 0 && !values::pathOf(file).has_root_path();
  const std::string address = (name ? "./" : "") + file;
  sqlite3* raw = nullptr;
  const int outcome =
      sqlite3_open_v2(address.c_str(), &raw, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
  Database database(raw);
  if (!raw) throw values::Errore("Out of memory");
  if (outcome != SQLITE_OK) throwFailure(raw);
  return database;
}

std::string describeFailure(sqlite3* database) {
  const std::string_view message = sqlite3_errmsg(database);
  const std::string where(subject(message));
  switch (sqlite3_extended_errcode(database)) {
    case SQLITE_CONSTRAINT_NOTNULL: return describeNull(where);
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_ROWID:
      return "Violation of a PRIMARY KEY or UNIQUE constraint: cannot insert duplicate key in " + where;
    case SQLITE_CONSTRAINT_FOREIGNKEY: return "The statement conflicted with a FOREIGN KEY constraint";
    case SQLITE_CONSTRAINT_CHECK: return "The statement conflicted with the CHECK constraint " + where;
    default: break;
  }
  switch (sqlite3_errcode(database) & kPrimaryCode) {
    case SQLITE_BUSY: return describeBusy(database);
    case SQLITE_LOCKED: return "The table is in use by another statement (" + std::string(message) + ")";
    case SQLITE_AUTH:
    case SQLITE_READONLY: return "The database is open for reading only";
    case SQLITE_CANTOPEN: return withSystemReason(database, "The database cannot be opened");
    case SQLITE_IOERR: return withSystemReason(database, "The database cannot be read or written");
    case SQLITE_FULL: return "The disk is full";
    case SQLITE_CORRUPT: return "The database is damaged (" + std::string(message) + ")";
    case SQLITE_NOTADB: return "The file is not a database of this provider";
    default: return std::string(message);
  }
}

void throwFailure(sqlite3* database) { throw values::Errore(describeFailure(database)); }

Prepared prepare(sqlite3* database, std::string_view sql, unsigned flags) {
  sqlite3_stmt* statement = nullptr;
  const int outcome =
      sqlite3_prepare_v3(database, sql.data(), static_cast<int>(sql.size()), flags, &statement, nullptr);
  if (outcome != SQLITE_OK) throwFailure(database);
  return Prepared(statement);
}

void run(sqlite3* database, const char* sql) {
  if (sqlite3_exec(database, sql, nullptr, nullptr, nullptr) != SQLITE_OK) throwFailure(database);
}

void stepToEnd(sqlite3* database, sqlite3_stmt* statement) {
  const ResetAtEnd reset(statement);
  int outcome = SQLITE_ROW;
  while (outcome == SQLITE_ROW) outcome = sqlite3_step(statement);
  if (outcome != SQLITE_DONE) throwFailure(database);
}

}  // namespace sqlite
