// Most runs of the program meet no server: libpq, with the thirty libraries that it brings, would take a run of a
// command as long to load as the command itself takes. These are its functions as far as the provider uses them; the
// first call loads it.
#include <dlfcn.h>
#include <libpq-fe.h>

#include <string>

#include "values/Errore.h"

namespace {

constexpr const char* kLibrary = "libpq.so.5";

void* addressOf(const char* function) {
  static void* const library = dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL);
  void* const address = library == nullptr ? nullptr : dlsym(library, function);
  if (address == nullptr)
    throw values::Errore(std::string("The client library of PostgreSQL cannot be loaded: ") + dlerror());
  return address;
}

/// The library's function of the name and type of this one.
template <auto function>
auto loaded(const char* name) {
  static const auto address = reinterpret_cast<decltype(function)>(addressOf(name));
  return address;
}

}  // namespace

extern "C" {

void PQclear(PGresult* res) { loaded<PQclear>("PQclear")(res); }
char* PQcmdStatus(PGresult* res) { return loaded<PQcmdStatus>("PQcmdStatus")(res); }
PQconninfoOption* PQconndefaults() { return loaded<PQconndefaults>("PQconndefaults")(); }
PGconn* PQconnectdbParams(const char* const* keywords, const char* const* values, int expand_dbname) {
  return loaded<PQconnectdbParams>("PQconnectdbParams")(keywords, values, expand_dbname);
}
void PQconninfoFree(PQconninfoOption* options) { loaded<PQconninfoFree>("PQconninfoFree")(options); }
int PQenterPipelineMode(PGconn* conn) { return loaded<PQenterPipelineMode>("PQenterPipelineMode")(conn); }
char* PQerrorMessage(const PGconn* conn) { return loaded<PQerrorMessage>("PQerrorMessage")(conn); }
PGresult* PQexec(PGconn* conn, const char* query) { return loaded<PQexec>("PQexec")(conn, query); }
PGresult* PQexecParams(PGconn* conn, const char* command, int nParams, const Oid* types, const char* const* values,
                       const int* lengths, const int* formats, int format) {
  return loaded<PQexecParams>("PQexecParams")(conn, command, nParams, types, values, lengths, formats, format);
}
PGresult* PQexecPrepared(PGconn* conn, const char* name, int nParams, const char* const* values, const int* lengths,
                         const int* formats, int format) {
  return loaded<PQexecPrepared>("PQexecPrepared")(conn, name, nParams, values, lengths, formats, format);
}
int PQexitPipelineMode(PGconn* conn) { return loaded<PQexitPipelineMode>("PQexitPipelineMode")(conn); }
void PQfinish(PGconn* conn) { loaded<PQfinish>("PQfinish")(conn); }
PGresult* PQgetResult(PGconn* conn) { return loaded<PQgetResult>("PQgetResult")(conn); }
int PQgetisnull(const PGresult* res, int row, int field) { return loaded<PQgetisnull>("PQgetisnull")(res, row, field); }
int PQgetlength(const PGresult* res, int row, int field) { return loaded<PQgetlength>("PQgetlength")(res, row, field); }
char* PQgetvalue(const PGresult* res, int row, int field) { return loaded<PQgetvalue>("PQgetvalue")(res, row, field); }
int PQnfields(const PGresult* res) { return loaded<PQnfields>("PQnfields")(res); }
int PQntuples(const PGresult* res) { return loaded<PQntuples>("PQntuples")(res); }
int PQpipelineSync(PGconn* conn) { return loaded<PQpipelineSync>("PQpipelineSync")(conn); }
PGresult* PQprepare(PGconn* conn, const char* name, const char* query, int nParams, const Oid* types) {
  return loaded<PQprepare>("PQprepare")(conn, name, query, nParams, types);
}
int PQputCopyData(PGconn* conn, const char* buffer, int bytes) {
  return loaded<PQputCopyData>("PQputCopyData")(conn, buffer, bytes);
}
int PQputCopyEnd(PGconn* conn, const char* error) { return loaded<PQputCopyEnd>("PQputCopyEnd")(conn, error); }
char* PQresultErrorField(const PGresult* res, int field) {
  return loaded<PQresultErrorField>("PQresultErrorField")(res, field);
}
ExecStatusType PQresultStatus(const PGresult* res) { return loaded<PQresultStatus>("PQresultStatus")(res); }
int PQsendQueryPrepared(PGconn* conn, const char* name, int nParams, const char* const* values, const int* lengths,
                        const int* formats, int format) {
  return loaded<PQsendQueryPrepared>("PQsendQueryPrepared")(conn, name, nParams, values, lengths, formats, format);
}
PQnoticeProcessor PQsetNoticeProcessor(PGconn* conn, PQnoticeProcessor processor, void* argument) {
  return loaded<PQsetNoticeProcessor>("PQsetNoticeProcessor")(conn, processor, argument);
}
ConnStatusType PQstatus(const PGconn* conn) { return loaded<PQstatus>("PQstatus")(conn); }
}
