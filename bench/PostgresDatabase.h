#pragma once

#include <benchmark/benchmark.h>
#include <libpq-fe.h>

#include <charconv>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "postgres/Handle.h"
#include "postgres/PostgresConnection.h"
#include "schema/Schema.h"

namespace bench {

/// A new database of the server that bench/run has started, with the system's tables and one company: the connection
/// that the object works on, and a plain connection of libpq beside it. Both must be done with it before it goes.
class PostgresDatabase {
 public:
  explicit PostgresDatabase(const std::string& name) {
    const auto server = connect("postgres");
    postgres::runSimple(server.get(), "DROP DATABASE IF EXISTS " + name + " WITH (FORCE)");
    postgres::runSimple(server.get(), "CREATE DATABASE " + name);
    connection->ConnectionString = "Provider=PostgreSQL;Host=" + folder() + ";User=bukorval;Database=" + name;
    connection->Open();
    schema::create(*connection);
    connection->Execute(
        "INSERT INTO CG18_ANADITTE (CG18_CODICE, CG18_RAGSOC, CG18_GRUPPO_CG10) VALUES (1, N'Prova', 1)");
    raw = connect(name);
  }

  std::shared_ptr<postgres::PostgresConnection> connection = std::make_shared<postgres::PostgresConnection>();
  postgres::Server raw;

 private:
  static std::string folder() {
    const char* folder = std::getenv("BUKORVAL_BENCH_POSTGRES");
    if (!folder) throw std::runtime_error("no server: run it by bench/run");
    return folder;
  }
  static postgres::Server connect(const std::string& database) {
    postgres::Server server(PQconnectdb(("host=" + folder() + " user=bukorval dbname=" + database).c_str()));
    if (PQstatus(server.get()) != CONNECTION_OK) throw std::runtime_error(PQerrorMessage(server.get()));
    postgres::runSimple(server.get(), "SET client_min_messages TO warning; SET jit TO off");
    return server;
  }
};

/// A statement as one writes it by hand: prepared once, run with texts, each answer waited for.
class ByHand {
 public:
  ByHand(PGconn* server, std::string name, const std::string& sql, const std::vector<Oid>& types = {})
      : server_(server), name_(std::move(name)) {
    const postgres::Result done(
        PQprepare(server, name_.c_str(), sql.c_str(), static_cast<int>(types.size()), types.data()));
    require(done.get());
  }
  ~ByHand() { const postgres::Result done(PQexec(server_, ("DEALLOCATE " + name_).c_str())); }
  ByHand(const ByHand&) = delete;
  ByHand& operator=(const ByHand&) = delete;

  postgres::Result run(const char* const* values, int count) const {
    postgres::Result result(PQexecPrepared(server_, name_.c_str(), count, values, nullptr, nullptr, 0));
    require(result.get());
    return result;
  }
  postgres::Result operator()(const std::vector<std::string>& values = {}) const {
    const char* pointers[8];
    for (std::size_t i = 0; i < values.size(); ++i) pointers[i] = values[i].c_str();
    return run(pointers, static_cast<int>(values.size()));
  }

 private:
  void require(const PGresult* result) const {
    if (!postgres::succeeded(result)) throw std::runtime_error(PQerrorMessage(server_));
  }
  PGconn* server_;
  std::string name_;
};

/// Every column of every row, numbers as numbers, is read and dropped. Gives the number of rows.
inline long readAll(const PGresult* result) {
  constexpr Oid kNumeric = 1700;
  const int rows = PQntuples(result), columns = PQnfields(result);
  for (int column = 0; column < columns; ++column) {
    const bool isNumber = PQftype(result, column) == kNumeric;
    for (int row = 0; row < rows; ++row) {
      const auto text = postgres::cell(result, row, column);
      double value = static_cast<double>(text.size());
      if (isNumber) std::from_chars(text.data(), text.data() + text.size(), value);
      benchmark::DoNotOptimize(value);
    }
  }
  return rows;
}

}  // namespace bench
