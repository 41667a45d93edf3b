#pragma once

#include <functional>
#include <string>

namespace bukorval::sheet {

/// Makes a file whole or not at all: `write` makes it under another name, beside the one it then takes the place of.
/// Throws dati::Refused when that cannot be done.
void replaceFile(const std::string& file, const std::function<void(const std::string& name)>& write);

}  // namespace bukorval::sheet
