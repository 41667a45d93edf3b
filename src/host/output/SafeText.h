#pragma once

#include <string>
#include <string_view>

namespace bukorval::host {

enum class Lines { Escape, Keep };

/// A text that a terminal shows and does not obey: control characters, bytes that are no UTF-8, and the signs that turn
/// the direction of writing are written out (\n, \x1B, \u202E). For what people read; programs get data as it is.
/// @param lines  what a message that has lines of its own keeps.
std::string safeText(std::string_view text, Lines lines = Lines::Escape);

}  // namespace bukorval::host
