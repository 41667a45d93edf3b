#pragma once

#include <unistd.h>

#include <atomic>
#include <filesystem>

#include "sqlite/SqliteConnection.h"
#include "support/Test.h"

namespace sqlite_tests {

/// A database file of its own for one test; gone at the end.
class TemporaryDatabase {
 public:
  TemporaryDatabase() {
    static std::atomic<int> number{0};
    path_ = std::filesystem::temp_directory_path() /
            ("bukorval_test_" + std::to_string(::getpid()) + "_" + std::to_string(++number) + ".db");
  }
  ~TemporaryDatabase() {
    for (const char* suffix : {"", "-wal", "-shm", "-journal"}) std::filesystem::remove(path() + suffix);
  }
  std::string path() const { return path_.string(); }
  std::string connectionString(const std::string& more = {}) const {
    return "Provider=SQLite;Data Source=" + path() + more;
  }
  std::shared_ptr<sqlite::SqliteConnection> open(const std::string& more = ";Create=True") const {
    auto connection = std::make_shared<sqlite::SqliteConnection>();
    connection->ConnectionString = connectionString(more);
    connection->Open();
    return connection;
  }

 private:
  std::filesystem::path path_;
};

}  // namespace sqlite_tests
