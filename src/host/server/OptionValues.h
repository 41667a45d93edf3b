#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "host/commands/Command.h"

/// The options of a command as members of a JSON object.
namespace bukorval::host::server {

enum class ValueType : std::uint8_t { Flag, Number, Text, Texts };
ValueType typeOf(const Option& option);

/// Every name it has, without dashes; the last one is the plainest. Single letters are for the command line alone.
std::vector<std::string> plainNames(const Option& option);

/// Gives the options their values. Throws UsageError for a name that no option has, a value of another type or outside
/// its range, and an option that is missing.
/// @return  the command as it would be written on the command line, for the history.
std::string take(const nlohmann::json& values, std::string_view command, const std::vector<Option>& options);

}  // namespace bukorval::host::server
