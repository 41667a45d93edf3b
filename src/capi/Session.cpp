#include <mutex>

#include "bukorval/Providers.h"
#include "capi/Guard.h"
#include "capi/Handles.h"
#include "values/Conversion.h"

using namespace capi;

namespace {

thread_local std::string lastError;

void registerOnce() {
  static std::once_flag done;
  std::call_once(done, bukorval::registerAll);
}

bukorval_code transaction(bukorval_session* session, void (ado::Connection::*step)()) {
  return guarded([&] { (given(session, "session").connection.get()->*step)(); });
}

}  // namespace

void capi::remember(const char* why) noexcept {
  try {
    lastError = why;
  } catch (...) {
    lastError.clear();
  }
}

extern "C" {

const char* bukorval_version(void) { return bukorval::version(); }
const char* bukorval_error(void) { return lastError.c_str(); }

bukorval_code bukorval_open(const char* connection_string, const char* company, bukorval_session** session) {
  return guarded([&] {
    registerOnce();
    auto& result = given(session, "session");
    auto opened = std::make_unique<bukorval_session>();
    opened->connection = ado::createConnection();
    opened->connection->ConnectionString = givenText(connection_string, "connection_string");
    opened->connection->Open();
    values::Variant number;
    if (company) number = values::toInt32(values::Variant(company));
    opened->session = std::make_shared<suite::Sessione>(opened->connection, number);
    result = opened.release();
  });
}

void bukorval_close(bukorval_session* session) { delete session; }

bukorval_code bukorval_execute(bukorval_session* session, const char* statement, bukorval_recordset** rows) {
  return guarded([&] {
    auto& connection = *given(session, "session").connection;
    auto result = std::make_unique<bukorval_recordset>();
    result->set = connection.Execute(givenText(statement, "statement"));
    if (rows) *rows = result.release();
  });
}

bukorval_code bukorval_begin(bukorval_session* session) { return transaction(session, &ado::Connection::BeginTrans); }
bukorval_code bukorval_commit(bukorval_session* session) { return transaction(session, &ado::Connection::CommitTrans); }
bukorval_code bukorval_rollback(bukorval_session* session) {
  return transaction(session, &ado::Connection::RollbackTrans);
}

bukorval_code bukorval_messages(bukorval_session* session, bukorval_message message, void* user) {
  return guarded([&] {
    auto& messenger = given(session, "session").session->messaggiero;
    messenger = {};
    if (message)
      messenger = [message, user](std::string_view text, int style, std::string_view title) {
        message(user, std::string(text).c_str(), style, std::string(title).c_str());
      };
  });
}

}  // extern "C"
