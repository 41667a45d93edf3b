#pragma once

#include <string>
#include <string_view>

/// Windows' text and ours. Only built there.
namespace values {

/// What is no UTF-8 becomes the replacement character.
std::wstring toWide(std::string_view text);
/// A lone surrogate, which no UTF-8 can hold, becomes the replacement character.
std::string fromWide(std::wstring_view wide);

}  // namespace values
