#include "host/ProgramTexts.h"

#include <algorithm>

#include "language/Language.h"

namespace bukorval::host {

std::string translatedHelp(std::string_view text) {
  std::string result, prose;
  const auto endOfProse = [&] {
    if (!prose.empty()) result.append(result.empty() ? "" : "\n").append(translated(prose));
    prose.clear();
  };
  while (!text.empty()) {
    const auto line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    if (!line.empty() && line.front() != ' ') {
      prose.append(prose.empty() ? "" : "\n").append(line);
      continue;
    }
    endOfProse();
    const auto gap = line.rfind("    ");
    const bool words = gap != std::string_view::npos && gap > 0 && gap + 4 < line.size() && !line.ends_with('\\');
    result.append(result.empty() ? "" : "\n").append(words ? line.substr(0, gap + 4) : line);
    if (words) result.append(translated(line.substr(gap + 4)));
  }
  endOfProse();
  return result;
}

}  // namespace bukorval::host
