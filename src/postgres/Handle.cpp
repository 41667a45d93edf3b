#include "postgres/Handle.h"

#include "postgres/WriterQueue.h"
#include "postgres/emitter/StoredType.h"
#include "values/Errore.h"

namespace postgres {
namespace {

std::string_view detail(const PGresult* result, int field) {
  const char* text = result ? PQresultErrorField(result, field) : nullptr;
  return text ? text : "";
}

/// The wait for others was.
constexpr std::string_view kTooLong = "55P03";

/// Failures that SQL Server has words for. "$t" and "$c" stand for the table and the column.
struct Wording {
  std::string_view code, text;
};
constexpr Wording kWordings[] = {
    {"22001", "String or binary data would be truncated"},
    {"22003", "Arithmetic overflow error converting expression to data type numeric"},
    {"22011", "Invalid length parameter passed to a text function."},
    {"22012", "Divide by zero error encountered."},
    {"23502", "Cannot insert the value NULL into column '$c', table '$t'; column does not allow nulls"},
    {"23503", "The statement conflicted with a FOREIGN KEY constraint"},
    {"23505", "Violation of a PRIMARY KEY or UNIQUE constraint: cannot insert duplicate key in $t"},
    {"23514", "The statement conflicted with the CHECK constraint of $t"},
    {"25006", "The database is open for reading only"},
    {"40001", "Un altro utente ha modificato gli stessi dati: l'operazione è stata annullata e va ripetuta"},
    {"40P01", "Un altro utente tiene gli stessi dati: l'operazione è stata annullata e va ripetuta"},
    {"42501", "The user has no permission for this ($m)"},
    {kTooLong, "I dati sono in uso da parte di un altro utente"},
};

/// libpq goes on with what it takes for the reason.
std::string firstLine(std::string_view text) { return std::string(text.substr(0, text.find('\n'))); }

void replace(std::string& text, std::string_view what, const std::string& with) {
  if (const auto at = text.find(what); at != std::string::npos) text.replace(at, what.size(), with);
}

}  // namespace

/// libpq writes hints on lines of their own.
std::string connectionFailure(PGconn* server) {
  std::string line;
  for (const char* c = PQerrorMessage(server); *c != '\0'; ++c) {
    const bool blank = *c == '\n' || *c == '\t' || *c == ' ';
    if (!blank || !line.ends_with(' ')) line += blank ? ' ' : *c;
  }
  while (line.ends_with(' ')) line.pop_back();
  return line;
}

bool succeeded(const PGresult* result) {
  const auto status = PQresultStatus(result);
  return status == PGRES_TUPLES_OK || status == PGRES_COMMAND_OK || status == PGRES_EMPTY_QUERY ||
         status == PGRES_COPY_IN;
}

std::string_view failureCode(const PGresult* result) { return detail(result, PG_DIAG_SQLSTATE); }

bool isCollision(std::string_view code) { return code == "40001" || code == "40P01"; }

std::string describeFailure(PGconn* server, const PGresult* result) {
  const auto code = failureCode(result);
  if (PQstatus(server) == CONNECTION_BAD)
    return "La connessione al database è caduta (" + firstLine(PQerrorMessage(server)) + ")";
  if (code == kTooLong)
    if (auto turn = describeTurn(server); !turn.empty()) return turn;
  const auto message = detail(result, PG_DIAG_MESSAGE_PRIMARY);
  for (const auto& wording : kWordings) {
    if (wording.code != code) continue;
    std::string text(wording.text);
    replace(text, "$c", shownName(detail(result, PG_DIAG_COLUMN_NAME)));
    replace(text, "$t", shownName(detail(result, PG_DIAG_TABLE_NAME)));
    replace(text, "$m", std::string(message));
    return text;
  }
  return message.empty() ? connectionFailure(server) : std::string(message);
}

Result runSimple(PGconn* server, const std::string& sql) {
  Result result(PQexec(server, sql.c_str()));
  if (!succeeded(result.get())) throw values::Errore(describeFailure(server, result.get()));
  return result;
}

}  // namespace postgres
