#pragma once

#include <string_view>

#include "odbc/Handle.h"

namespace odbc {

/// An open connection of a driver.
struct Login {
  Handle environment;
  Handle connection;
};

/// Connects, with the user unless it is empty.
/// @param connectionString  the driver's entries; Provider is ours. FreeTDS may be set up to speak a version of its
///   protocol that knows too little of the server's types: it is then asked for a later one, unless the string names
///   the version itself.
/// Throws values::Errore with the driver's reason, or when the version stays too old.
Login login(std::string_view connectionString, std::string_view user, std::string_view password);

}  // namespace odbc
