#include "sqlite/Handle.h"

#include "values/Errore.h"

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

}  // namespace

Database open(const std::string& file, int flags) {
  sqlite3* raw = nullptr;
  const int outcome = sqlite3_open_v2(file.c_str(), &raw, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
  Database database(raw);
  if (outcome != SQLITE_OK) {
    throw values::Errore("Cannot open the database file '" + file +
                         "': " + (raw ? sqlite3_errmsg(raw) : "out of memory"));
  }
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
  switch (sqlite3_errcode(database)) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED: return "The database is in use by another program (" + std::string(message) + ")";
    case SQLITE_READONLY: return "The database is open for reading only";
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
