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

/// The order of SQL Server's usual collation (CI_AS) as far as the suite needs it: trailing blanks and the case of
/// letters do not count; texts are ordered by their base letters (signs, digits, letters, then everything else), and
/// only where those are the same do accents decide, the first that differs, a plain letter before its accented ones.
/// Accented letters are those of U+00C0 to U+017F.
int compareText(std::string_view a, std::string_view b);
/// An order of the same equalities, letter by letter: an accent decides where it stands. Older files are kept in it.
int compareLetters(std::string_view a, std::string_view b);
/// One key per class of texts that compareText holds equal: a hash key for indexes.
std::string foldText(std::string_view text);

}  // namespace values
