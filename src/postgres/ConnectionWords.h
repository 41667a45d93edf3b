#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace postgres {

/// What a connection string asks for, as libpq takes it.
struct ConnectionWords {
  std::vector<std::string> names, values;
  bool readOnly = false;  ///< Mode=Read
  int busyTimeout = 0;    ///< seconds
};

/// The entries of a connection string: Host (or Server), Database (or Initial Catalog), User (User ID, UID), Password
/// (PWD), Mode=Read, Busy Timeout=SECONDS, and any word of libpq's own, service among them. Throws values::Errore for
/// any other, and quotes its name, never its value.
ConnectionWords wordsOf(std::string_view connectionString, std::string_view user, std::string_view password);

}  // namespace postgres
