#pragma once

#include <libpq-fe.h>
#include <unistd.h>

#include <atomic>
#include <fstream>

#include "postgres/Handle.h"
#include "postgres/PostgresConnection.h"
#include "support/Test.h"

namespace postgres_tests {

/// How the tests' own server is reached (see the script `cluster`).
inline std::string host() {
  std::string folder;
  std::ifstream(BUKORVAL_POSTGRES_STATE) >> folder;
  return folder;
}

inline std::string connectionString(const std::string& database, const std::string& more = {}) {
  return "Provider=PostgreSQL;Host=" + host() + ";User=bukorval;Database=" + database + more;
}

/// The server past the provider.
inline postgres::Server rawServer(const std::string& database = "postgres") {
  postgres::Server server(PQconnectdb(("host=" + host() + " user=bukorval dbname=" + database).c_str()));
  if (PQstatus(server.get()) != CONNECTION_OK) throw values::Errore(PQerrorMessage(server.get()));
  return server;
}

/// An empty database for one test; gone at the end, whoever is still connected.
class TemporaryDatabase {
 public:
  /// @param model  a database that it is a copy of
  explicit TemporaryDatabase(const std::string& model = "template1") {
    static std::atomic<int> number{0};
    name_ = "test_" + std::to_string(::getpid()) + "_" + std::to_string(++number);
    postgres::runSimple(rawServer().get(), "CREATE DATABASE " + name_ + " TEMPLATE " + model);
  }
  ~TemporaryDatabase() {
    const postgres::Result done(PQexec(rawServer().get(), ("DROP DATABASE " + name_ + " WITH (FORCE)").c_str()));
  }
  TemporaryDatabase(const TemporaryDatabase&) = delete;
  TemporaryDatabase& operator=(const TemporaryDatabase&) = delete;

  const std::string& name() const { return name_; }
  std::shared_ptr<postgres::PostgresConnection> open(const std::string& more = {}) const {
    auto connection = std::make_shared<postgres::PostgresConnection>();
    connection->ConnectionString = connectionString(name_, more);
    connection->Open();
    return connection;
  }

 private:
  std::string name_;
};

}  // namespace postgres_tests
