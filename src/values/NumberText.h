#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace values {

/// Brings a number given as text to plain notation (point, no grouping, no blanks around). Nothing when its
/// commas and points make no number; the digits are not checked.
std::optional<std::string> plainNumber(std::string_view text, char separator);

}  // namespace values
