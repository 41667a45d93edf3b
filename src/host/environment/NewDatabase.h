#pragma once

#include <functional>
#include <string>

namespace bukorval::host {

/// Makes a database file, whole or not at all, and never over one that is there.
/// @param fill  writes the database under the passing name that it is given, and closes it.
/// Throws dati::Refused when the name is taken; who holds it is left alone.
void makeDatabase(const std::string& file, const std::function<void(const std::string& workName)>& fill);

}  // namespace bukorval::host
