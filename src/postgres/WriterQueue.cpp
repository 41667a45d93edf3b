#include "postgres/WriterQueue.h"

#include "postgres/Handle.h"
#include "values/Errore.h"

namespace postgres {
namespace {

/// Number of the lock in its database.
const std::string kQueue = "1112232785";

std::string call(const char* function) { return std::string("SELECT ") + function + "(" + kQueue + ")"; }

/// "bukorval, utente maria (PID 4711)", and the seconds that this session waits.
const std::string kHolder =
    "SELECT coalesce(nullif(a.application_name, ''), 'un altro programma') || ', utente ' || a.usename || ' (PID '"
    " || a.pid || ')', extract(epoch FROM current_setting('lock_timeout')::interval)::int"
    " FROM pg_locks l JOIN pg_stat_activity a ON a.pid = l.pid WHERE l.locktype = 'advisory' AND l.granted"
    " AND l.database = (SELECT oid FROM pg_database WHERE datname = current_database())"
    " AND l.classid = 0 AND l.objsubid = 1 AND l.pid <> pg_backend_pid() AND l.objid = " +
    kQueue + " LIMIT 1";

}  // namespace

std::string takeTurn() { return "SELECT FROM pg_advisory_xact_lock(" + kQueue + ")"; }

void beginInTurn(PGconn* server, const std::string& begin, const std::string& then) {
  // The session waits, not the transaction: its snapshot would be older than what the others leave.
  runSimple(server, call("pg_advisory_lock"));
  const auto handOver = call("pg_advisory_unlock");
  try {
    runSimple(server, begin + "; " + takeTurn() + "; " + handOver + "; " + then);
  } catch (const values::Errore&) {
    const Result back(PQexec(server, "ROLLBACK")), free(PQexec(server, handOver.c_str()));
    throw;
  }
}

std::string waitSetting(int seconds) {
  return "SET lock_timeout TO " + std::to_string(seconds == 0 ? 1 : seconds * 1000);
}

std::string describeTurn(PGconn* server) {
  const Result holder(PQexec(server, kHolder.c_str()));
  if (PQresultStatus(holder.get()) != PGRES_TUPLES_OK || PQntuples(holder.get()) == 0) return {};
  auto text = "Il database è in uso da parte di " + std::string(cell(holder.get(), 0, 0));
  const auto seconds = cell(holder.get(), 0, 1);
  if (seconds != "0") text.append("; atteso ").append(seconds).append(" s");
  return text;
}

}  // namespace postgres
