#include "odbc/Handle.h"

#include <algorithm>
#include <array>
#include <utility>

#include "odbc/Wide.h"
#include "values/Errore.h"

namespace odbc {

Handle::Handle(SQLSMALLINT type, SQLHANDLE parent) : type_(type) {
  if (!SQL_SUCCEEDED(SQLAllocHandle(type, parent, &handle_))) {
    handle_ = SQL_NULL_HANDLE;
    throw values::Errore("The ODBC driver manager could not allocate a handle");
  }
}

Handle::~Handle() { reset(); }

Handle::Handle(Handle&& other) noexcept : type_(other.type_), handle_(std::exchange(other.handle_, nullptr)) {}

Handle& Handle::operator=(Handle&& other) noexcept {
  std::swap(type_, other.type_);
  std::swap(handle_, other.handle_);
  return *this;
}

void Handle::reset() {
  if (handle_ != SQL_NULL_HANDLE) SQLFreeHandle(type_, handle_);
  handle_ = SQL_NULL_HANDLE;
}

void Handle::check(SQLRETURN outcome) const {
  if (SQL_SUCCEEDED(outcome) || outcome == SQL_NO_DATA) return;
  throw values::Errore(description());
}

std::string Handle::description() const {
  std::array<SQLWCHAR, 6> state{};
  std::array<char16_t, SQL_MAX_MESSAGE_LENGTH * 4> text{};
  SQLINTEGER native = 0;
  SQLSMALLINT length = 0;
  const auto outcome =
      SQLGetDiagRecW(type_, handle_, 1, state.data(), &native, reinterpret_cast<SQLWCHAR*>(text.data()),
                     static_cast<SQLSMALLINT>(text.size()), &length);
  if (!SQL_SUCCEEDED(outcome)) return "The ODBC driver reported a failure without a description";
  // The text ends at its zero: some drivers count bytes in the length.
  std::string message = fromWide(text.data());
  // Drivers put their own names in brackets before the database's words.
  while (message.starts_with('[') && message.find(']') != std::string::npos) message.erase(0, message.find(']') + 1);
  const auto first = std::min(message.find_first_not_of(' '), message.size());
  const auto last = message.find_last_not_of(". \r\n");
  return last == std::string::npos ? "The ODBC driver reported a failure with an empty description"
                                   : message.substr(first, last + 1 - first);
}

}  // namespace odbc
