#pragma once

#include <string>

namespace com {

/// The text of the type library: the dispatch interface with every member of the table, its events and its classes.
/// @param sourceFolder  where the headers of the contract lie, whose sentences become the help texts.
std::string typeLibraryText(const std::string& sourceFolder);

}  // namespace com
