#include "com/ConnectionObject.h"

#include "com/Results.h"
#include "values/Conversion.h"

namespace com {
namespace {

using C = ConnectionObject;

OleVariant open(ado::Connection& connection, const Arguments& arguments) {
  if (arguments.has(0)) connection.ConnectionString = arguments.text(0);
  connection.Open(arguments.text(1), arguments.text(2), arguments.number(3, -1));
  return {};
}

}  // namespace

std::span<const Entry<ConnectionObject>> ConnectionObject::entries() {
  static constexpr Entry<C> kEntries[] = {
      {"ConnectionString", "", [](C& c, Arguments&) { return valueOf(c.connection_->ConnectionString); },
       [](C& c, Arguments& a) { c.connection_->ConnectionString = values::toText(toValue(a.assigned())); },
       DISPID_VALUE},
      {"CursorLocation", "", [](C& c, Arguments&) { return valueOf(c.connection_->CursorLocation); },
       [](C& c, Arguments& a) { c.connection_->CursorLocation = values::toInt32(toValue(a.assigned())); }},
      {"Mode", "", [](C& c, Arguments&) { return valueOf(c.connection_->Mode); },
       [](C& c, Arguments& a) { c.connection_->Mode = values::toInt32(toValue(a.assigned())); }},
      {"IsolationLevel", "", [](C& c, Arguments&) { return valueOf(c.connection_->IsolationLevel); },
       [](C& c, Arguments& a) { c.connection_->IsolationLevel = values::toInt32(toValue(a.assigned())); }},
      {"State", "", [](C& c, Arguments&) { return valueOf(std::int32_t{c.connection_->State()}); }},
      {"Open", "ConnectionString? UserID? Password? Options?",
       [](C& c, Arguments& a) { return open(*c.connection_, a); }},
      {"Close", "", [](C& c, Arguments&) { return c.connection_->Close(), OleVariant(); }},
      {"Execute", "CommandText RecordsAffected? Options?",
       [](C& c, Arguments& a) { return dispatchValue(objectOf(c.connection_->Execute(a.text(0)))); }},
      {"BeginTrans", "", [](C& c, Arguments&) { return c.connection_->BeginTrans(), valueOf(1); }},
      {"CommitTrans", "", [](C& c, Arguments&) { return c.connection_->CommitTrans(), OleVariant(); }},
      {"RollbackTrans", "", [](C& c, Arguments&) { return c.connection_->RollbackTrans(), OleVariant(); }},
  };
  return kEntries;
}

}  // namespace com
