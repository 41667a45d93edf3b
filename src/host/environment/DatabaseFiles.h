#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace bukorval::host {

/// Makes a database file, whole or not at all, and never over one that is there.
/// @param fill  writes the database under the passing name that it is given, and closes it.
/// Throws dati::Refused when the name is taken; who holds it is left alone.
void makeDatabase(const std::string& file, const std::function<void(const std::string& workName)>& fill);

/// Throws dati::Refused when a command needs a database that is a file, and this one is a server's.
void requireEmbedded(const std::string& connectionString, std::string_view command);

}  // namespace bukorval::host
