#include <algorithm>

#include "host/commands/Command.h"

namespace bukorval::host {

bool isFlag(const Option& option) {
  return std::holds_alternative<bool*>(option.target) ||
         std::holds_alternative<std::function<void(bool)>>(option.target);
}

bool isArgument(const Option& option) { return !option.flags.starts_with('-'); }

std::vector<std::string> namesOf(const Option& option) {
  std::vector<std::string> names;
  for (std::string_view flags = option.flags; !flags.empty();) {
    const auto end = std::min(flags.find(','), flags.size());
    names.emplace_back(flags.substr(0, end));
    flags.remove_prefix(std::min(end + 1, flags.size()));
  }
  return names;
}

}  // namespace bukorval::host
