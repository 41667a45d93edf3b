#include "odbc/Login.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>

#include "ado/connection/ConnectionString.h"
#include "odbc/Wide.h"
#include "values/Errore.h"

namespace odbc {
namespace {

using values::Errore;

constexpr std::size_t kLongestString = std::numeric_limits<SQLSMALLINT>::max();

/// What FreeTDS tells of itself beyond the standard: its version of the protocol, the main number in the upper half.
constexpr SQLUSMALLINT kProtocolVersion = 1300;
constexpr SQLUINTEGER version(SQLUINTEGER main, SQLUINTEGER minor) { return main << 16U | minor; }
constexpr const char* kVersionWord = "TDS_Version";
constexpr const char* kVersionAskedFor = "7.4";

/// A value that may hold any sign, as an entry of a connection string.
std::string braced(std::string_view value) {
  std::string text = "{";
  for (const char c : value) text.append(c == '}' ? 2 : 1, c);
  return text += "}";
}

void append(std::string& text, const std::string& entry) {
  if (!text.empty() && text.back() != ';') text += ';';
  text += entry;
}

Login connected(const std::string& words) {
  const auto text = toWide(words);
  if (text.size() > kLongestString) throw Errore("The connection string is too long");
  Handle environment(SQL_HANDLE_ENV, SQL_NULL_HANDLE);
  environment.check(SQLSetEnvAttr(environment.get(), SQL_ATTR_ODBC_VERSION,
                                  reinterpret_cast<SQLPOINTER>(std::uintptr_t{SQL_OV_ODBC3}), 0));
  Handle connection(SQL_HANDLE_DBC, environment.get());
  connection.check(SQLDriverConnectW(connection.get(), nullptr, units(text), static_cast<SQLSMALLINT>(text.size()),
                                     nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT));
  return {std::move(environment), std::move(connection)};
}

/// Too old a version of the protocol, or none. Other drivers do not know the question.
std::optional<SQLUINTEGER> tooOld(const Login& login) {
  SQLUINTEGER spoken = 0;
  SQLSMALLINT length = 0;
  const auto outcome = SQLGetInfoW(login.connection.get(), kProtocolVersion, &spoken, sizeof spoken, &length);
  if (!SQL_SUCCEEDED(outcome) || length != sizeof spoken || spoken >= version(7, 2)) return std::nullopt;
  return spoken;
}

}  // namespace

Login login(std::string_view connectionString, std::string_view user, std::string_view password) {
  std::string words = ado::withoutEntry(connectionString, "Provider");
  if (!user.empty()) append(words, "UID=" + braced(user) + ";PWD=" + braced(password));
  auto login = connected(words);
  auto old = tooOld(login);
  if (old && ado::connectionEntry(words, kVersionWord).empty()) {
    SQLDisconnect(login.connection.get());
    append(words, std::string(kVersionWord) + "=" + kVersionAskedFor);
    login = connected(words);
    old = tooOld(login);
  }
  if (!old) return login;
  SQLDisconnect(login.connection.get());
  throw Errore("The driver speaks version " + std::to_string(*old >> 16U) + "." + std::to_string(*old & 0xFFFFU) +
               " of the server's protocol: " + kVersionWord + "=7.2 or later is needed");
}

}  // namespace odbc
