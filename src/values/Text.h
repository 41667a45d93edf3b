#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Text helpers. Lengths count characters of UTF-8, not bytes; "blank" is the space character.
namespace values {

std::string_view trim(std::string_view text);
std::string_view rtrim(std::string_view text);
std::size_t length(std::string_view text);
/// The first `count` characters.
std::string_view left(std::string_view text, std::size_t count);
/// `count` characters from the zero-based position `start`.
std::string_view mid(std::string_view text, std::size_t start, std::size_t count);
/// Exactly `width` characters: blanks added on the right, or cut.
std::string padRight(std::string_view text, std::size_t width);

/// The order of SQL Server's usual collation as far as the suite needs it: letters without regard to case
/// (ASCII and the accented Latin ones), trailing blanks ignored.
int compareText(std::string_view a, std::string_view b);
/// One key per class of texts that compareText holds equal: a hash key for indexes.
std::string foldText(std::string_view text);

}  // namespace values
