#pragma once

#include <string_view>
#include <vector>

#include "host/commands/Command.h"

namespace bukorval::host {

/// The options that every command has: database and output.
std::vector<Option> outputOptions(SharedOptions& options);

/// One option for each property of the object that a command uses and that can be written as text, under the
/// property's own name. A name that is no command's has all of them.
std::vector<Option> propertyOptions(std::string_view command, SharedOptions& options);
bool offers(std::string_view command, std::string_view property);

}  // namespace bukorval::host
