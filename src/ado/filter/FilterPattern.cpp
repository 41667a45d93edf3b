#include "ado/filter/FilterPattern.h"

#include "values/Errore.h"
#include "values/Text.h"

namespace ado {
namespace {

constexpr std::string_view kWildcards = "*%";

bool isWildcard(char c) { return kWildcards.find(c) != std::string_view::npos; }

/// Case folded, blanks at the end kept: in a pattern they may stand before a wildcard.
std::string folded(std::string_view text) {
  std::string closed(text);
  closed += '|';
  closed = values::foldText(closed);
  closed.pop_back();
  return closed;
}

}  // namespace

FilterPattern::FilterPattern(std::string_view pattern) {
  pattern = values::rtrim(pattern);
  if (!pattern.empty() && isWildcard(pattern.back())) {
    openEnd_ = true;
    pattern.remove_suffix(1);
  }
  if (!pattern.empty() && isWildcard(pattern.front())) {
    openStart_ = true;
    pattern.remove_prefix(1);
  }
  if (pattern.find_first_of(kWildcards) != std::string_view::npos)
    throw values::Errore("LIKE takes * and % only at the ends of the text");
  core_ = folded(pattern);
}

bool FilterPattern::matches(std::string_view text) const {
  // Fixed columns are padded: the padding may fill an open end, but never stands between the text and a closed one.
  const std::string cell = folded(openEnd_ ? text : values::rtrim(text));
  if (openStart_ && openEnd_) return cell.find(core_) != std::string::npos;
  if (openStart_) return cell.ends_with(core_);
  return openEnd_ ? cell.starts_with(core_) : cell == core_;
}

}  // namespace ado
