#pragma once

#include <string_view>

namespace suite {

/// The built-in text of a catalogue message; nothing ("") for a number that has none.
std::string_view testoPredefinito(int numero);

}  // namespace suite
