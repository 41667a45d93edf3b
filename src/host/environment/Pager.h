#pragma once

#include <string>

namespace bukorval::host {

/// Sends a text to standard output: through BUKORVAL_PAGER, PAGER or less when that is a terminal which is too small
/// for it. An empty one, or `cat`, is none.
/// @param page  whether a pager is wanted at all.
void writePaged(const std::string& text, bool page);

}  // namespace bukorval::host
