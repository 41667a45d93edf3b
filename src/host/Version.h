#pragma once

#include <string>

namespace bukorval::host {

/// "bukorval 0.1.0", and in brackets what it was built from: the commit, where the sources say one, the kind of build
/// and the compiler.
std::string versionText();

}  // namespace bukorval::host
