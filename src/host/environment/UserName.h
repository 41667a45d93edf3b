#pragma once

#include <string>

namespace bukorval::host {

/// Who runs the program, as the system knows them; their number where they have no name.
std::string userName();

}  // namespace bukorval::host
