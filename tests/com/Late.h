#pragma once

#include "com/Results.h"
#include "com/foreign/ArrayReader.h"
#include "com/foreign/Caller.h"
#include "object/DemoCompany.h"
#include "support/Test.h"
#include "values/WideText.h"

namespace com_tests {

using com::Caller, com::OleVariant, com::Ref;

/// A new object by the name of its class, as a script makes one.
inline Caller create(const wchar_t* name) {
  CLSID id{};
  Ref<IDispatch> object;
  EXPECT_EQ(::CLSIDFromProgID(name, &id), S_OK);
  EXPECT_EQ(
      ::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, reinterpret_cast<void**>(object.out())),
      S_OK);
  return Caller(std::move(object));
}

inline OleVariant objectValue(const Caller& caller) { return com::dispatchValue(caller.ref()); }

template <class... A>
std::vector<OleVariant> pack(A&&... values) {
  std::vector<OleVariant> arguments;
  (arguments.push_back(OleVariant(std::forward<A>(values))), ...);
  return arguments;
}
template <class... A>
std::vector<OleVariant> args(A&&... values) {
  return pack(com::valueOf(std::forward<A>(values))...);
}

/// "Int32 5": a value with its kind, so that a wrong subtype shows.
inline std::string shown(const Variant& value) {
  constexpr std::array kKinds{"Empty", "Null", "Int16", "Int32", "Double", "Decimal", "Date", "String", "Boolean"};
  if (value.kind() == values::Kind::Object) return "Object";
  return std::string(kKinds[static_cast<std::size_t>(value.kind())]) + ' ' + values::toPlainText(value);
}

inline std::string shownRows(const std::vector<std::vector<Variant>>& columns) {
  std::string text;
  for (std::size_t row = 0; !columns.empty() && row < columns[0].size(); ++row) {
    for (const auto& column : columns) text += shown(column[row]) + "; ";
    text += '\n';
  }
  return text;
}

/// The rows of a record set, read by its dispatch interface.
inline std::string rowsOf(const Caller& set) {
  if (values::toInt32(set.value(L"RecordCount")) == 0) return "";
  set.call(L"MoveFirst");
  return shownRows(com::tableOf(set.call(L"GetRows").get()));
}

/// A company in a file, with the connection, session and object of the component on it.
class LateCompany : public object_tests::DemoCompany {
 protected:
  LateCompany() {
    connection.call(L"Open", args("Provider=SQLite;Data Source=" + database.path()));
    lateSession.call(L"Open", pack(objectValue(connection)));
    budget.put(L"Connessione", objectValue(connection));
    budget.put(L"ActiveInterface", objectValue(lateSession));
  }

  std::string outcome() const { return shown(budget.value(L"Stato")) + " " + shown(budget.value(L"errore")); }
  void set(std::string_view name, const Variant& value) const {
    budget.put(values::toWide(name).c_str(), com::fromValue(value));
  }

  Caller connection = create(L"BUKORVAL.Connection");
  Caller lateSession = create(L"BUKORVAL.Session");
  Caller budget = create(L"BUKORVAL.CLSKORVAL");
};

}  // namespace com_tests
