#pragma once

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include "schema/Schema.h"
#include "sqlite/Handle.h"
#include "sqlite/SqliteConnection.h"
#include "sqlite/functions/Functions.h"

namespace bench {

/// A new file with the system's tables and one company: the connection that the object works on, and a raw handle of
/// the engine beside it. The file goes with it, so whatever works on it must go first.
class FileDatabase {
 public:
  explicit FileDatabase(const std::string& name) : file_(std::filesystem::temp_directory_path() / (name + ".db")) {
    remove();
    connection->ConnectionString = "Provider=SQLite;Create=True;Data Source=" + file_.string();
    connection->Open();
    schema::create(*connection);
    connection->Execute(
        "INSERT INTO CG18_ANADITTE (CG18_CODICE, CG18_RAGSOC, CG18_GRUPPO_CG10) VALUES (1, N'Prova', 1)");
    sqlite3* handle = nullptr;
    const int outcome = sqlite3_open(file_.string().c_str(), &handle);
    raw.reset(handle);
    if (outcome != SQLITE_OK) throw std::runtime_error("cannot open " + file_.string());
    sqlite::registerFunctions(handle);
    sqlite::run(handle, "PRAGMA temp_store = MEMORY");
    sqlite::run(handle, "PRAGMA cache_size = -65536");
  }
  ~FileDatabase() {
    raw.reset();
    connection->Close();
    remove();
  }
  FileDatabase(const FileDatabase&) = delete;
  FileDatabase& operator=(const FileDatabase&) = delete;

  std::shared_ptr<sqlite::SqliteConnection> connection = std::make_shared<sqlite::SqliteConnection>();
  sqlite::Database raw;

 private:
  void remove() const {
    for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(file_.string() + suffix);
  }
  std::filesystem::path file_;
};

/// Steps a bound statement to its end; every column of every row is read and dropped. Gives the number of rows.
inline long stepAll(sqlite3* database, sqlite3_stmt* statement) {
  const sqlite::ResetAtEnd reset(statement);
  long rows = 0;
  int outcome = SQLITE_ROW;
  while ((outcome = sqlite3_step(statement)) == SQLITE_ROW) {
    ++rows;
    for (int i = 0; i < sqlite3_column_count(statement); ++i)
      benchmark::DoNotOptimize(sqlite3_column_type(statement, i) == SQLITE_TEXT
                                   ? static_cast<sqlite3_int64>(sqlite3_column_bytes(statement, i))
                                   : sqlite3_column_int64(statement, i));
  }
  if (outcome != SQLITE_DONE) sqlite::throwFailure(database);
  return rows;
}

}  // namespace bench
