#pragma once

#include <libpq-fe.h>

#include <memory>
#include <string>
#include <string_view>

namespace postgres {

struct FinishConnection {
  void operator()(PGconn* connection) const { PQfinish(connection); }
};
using Server = std::unique_ptr<PGconn, FinishConnection>;

struct ClearResult {
  void operator()(PGresult* result) const { PQclear(result); }
};
using Result = std::unique_ptr<PGresult, ClearResult>;

bool succeeded(const PGresult* result);
/// The server's five signs for a failure, "" for one of the connection.
std::string_view failureCode(const PGresult* result);
/// Whether the whole transaction is lost, because others worked on the same rows.
bool isCollision(std::string_view code);

/// A failure in SQL Server's words where it has some, else in the server's.
std::string describeFailure(PGconn* server, const PGresult* result);

/// What is wrong with the connection, in one line.
std::string connectionFailure(PGconn* server);

/// Runs statements without parameters. Throws values::Errore.
Result runSimple(PGconn* server, const std::string& sql);

/// A cell of a result as text.
inline std::string_view cell(const PGresult* result, int row, int column) {
  return {PQgetvalue(result, row, column), static_cast<std::size_t>(PQgetlength(result, row, column))};
}

}  // namespace postgres
