#pragma once

#include <string>
#include <string_view>

namespace postgres {

/// Capitals, blanks kept: what bk_upper gives on the server.
std::string foldedPattern(std::string_view text);

/// A pattern of SQL Server's LIKE as a regular expression over what bk_upper gives: % any text, _ one character,
/// [a-f1] one of a set, [^a-f] one outside it. Blanks at the end of a matched text do not count.
std::string likeRegex(std::string_view pattern);

}  // namespace postgres
