#pragma once

#include <cstddef>
#include <cstdio>
#include <string_view>

namespace bukorval::host {

bool isTerminal(std::FILE* stream);
/// Colour is for terminals, and only where NO_COLOR is unset or empty.
bool wantsColour(std::FILE* stream);

/// How much a terminal shows at once, in characters.
struct Screen {
  std::size_t columns = 80, rows = 24;
};
/// That of standard output; COLUMNS and LINES come before what the terminal says of itself.
Screen screen();

/// Asks before something is destroyed. Elsewhere than on a terminal nobody can answer: then `yes` (--yes) is
/// needed. Throws dati::Refused when the answer is no, or when there is nobody to ask.
void confirm(std::string_view question, bool yes);

}  // namespace bukorval::host
