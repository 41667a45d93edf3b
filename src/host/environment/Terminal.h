#pragma once

#include <cstdio>
#include <string_view>

namespace bukorval::host {

bool isTerminal(std::FILE* stream);
/// Colour is for terminals, and only where NO_COLOR is unset or empty.
bool wantsColour(std::FILE* stream);

/// Characters in a line, 40 to 200; 80 where that is no terminal.
int terminalWidth(std::FILE* stream);

/// Asks before something is destroyed. Elsewhere than on a terminal nobody can answer: then `yes` (--yes) is
/// needed. Throws dati::Refused when the answer is no, or when there is nobody to ask.
void confirm(std::string_view question, bool yes);

}  // namespace bukorval::host
