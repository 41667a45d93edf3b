#pragma once

#include <cstdio>
#include <string_view>

namespace bukorval::host {

bool eTerminale(std::FILE* flusso);
/// Colour is for terminals, and only where NO_COLOR is unset or empty.
bool vuoleColore(std::FILE* flusso);

/// Asks before something is destroyed. Elsewhere than on a terminal nobody can answer: then `si` (--yes) is
/// needed. Throws Interrotto when the answer is no, or when there is nobody to ask.
void conferma(std::string_view domanda, bool si);

}  // namespace bukorval::host
