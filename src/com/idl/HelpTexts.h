#pragma once

#include <map>
#include <string>

namespace com {

/// The first sentence of what stands above each member in the headers of the contract, by the member's name.
std::map<std::string, std::string> helpTexts(const std::string& sourceFolder);

}  // namespace com
