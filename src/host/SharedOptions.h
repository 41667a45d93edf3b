#pragma once

#include <string_view>
#include <vector>

#include "host/commands/Command.h"

namespace bukorval::host {

/// What heads the options that a command does not run without, in its help.
inline constexpr const char* kNeededGroup = "Needed";
inline constexpr const char* kMayNeedGroup = "Needed where the budget is kept so";

/// The options that every command has: database and output.
std::vector<Option> outputOptions(SharedOptions& options);

/// One option for each property of the object that a command uses and that can be written as text, under the
/// property's own name. A name that is no command's has all of them.
std::vector<Option> propertyOptions(std::string_view command, SharedOptions& options);
/// Everything that may stand behind a command's name: its own options and the shared ones that it uses, those
/// that it needs first.
std::vector<Option> commandOptions(const Command& command, SharedOptions& options);
bool offers(std::string_view command, std::string_view property);

}  // namespace bukorval::host
