#include "com/foreign/ClientConnection.h"

#include "com/Results.h"
#include "com/foreign/ClientRecordset.h"
#include "values/Conversion.h"

namespace com {

void ClientConnection::Open(std::string_view user, std::string_view password, std::int32_t options) {
  std::vector<OleVariant> arguments;
  arguments.push_back(valueOf(ConnectionString));
  arguments.push_back(valueOf(user));
  arguments.push_back(valueOf(password));
  arguments.push_back(valueOf(options));
  caller_.call(L"Open", std::move(arguments));
}

void ClientConnection::Close() { caller_.call(L"Close"); }

ado::ObjectStateEnum ClientConnection::State() const {
  return values::toInt32(caller_.value(L"State")) == ado::adStateClosed ? ado::adStateClosed : ado::adStateOpen;
}

ado::RecordsetPtr ClientConnection::Execute(std::string_view text) {
  std::vector<OleVariant> arguments;
  arguments.push_back(valueOf(text));
  const auto answer = dispatchOf(caller_.call(L"Execute", std::move(arguments)).get());
  return answer ? readRecordset(Caller(answer)) : std::make_shared<ado::Recordset>();
}

void ClientConnection::BeginTrans() { caller_.call(L"BeginTrans"); }
void ClientConnection::CommitTrans() { caller_.call(L"CommitTrans"); }
void ClientConnection::RollbackTrans() { caller_.call(L"RollbackTrans"); }

}  // namespace com
