#pragma once

#include <string_view>

#include "sqlite/DatabaseFile.h"

namespace sqlite {

/// What the entries of a connection string ask for: see SqliteConnection.h.
struct ConnectionWords {
  FileWish file;
  int busyTimeout = 0;      ///< seconds
  const char* synchronous;  ///< the statement that sets it
};

/// Throws values::Errore for an entry that this provider cannot follow.
ConnectionWords wordsOf(std::string_view connectionString);

}  // namespace sqlite
