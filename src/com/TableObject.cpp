#include "com/TableObject.h"

#include "values/Text.h"

namespace com {

void readParameters(MemberInfo& info, std::string_view parameters) {
  while (!(parameters = values::trim(parameters)).empty()) {
    auto name = parameters.substr(0, parameters.find(' '));
    parameters.remove_prefix(name.size());
    const bool optional = name.ends_with('?');
    if (optional) name.remove_suffix(1);
    info.parameters.emplace_back(name.begin(), name.end());
    if (!optional) info.least = info.parameters.size();
  }
}

}  // namespace com
