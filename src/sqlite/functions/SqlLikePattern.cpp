#include "sqlite/functions/SqlLikePattern.h"

#include <algorithm>

#include "values/Text.h"

namespace sqlite {
namespace {

/// Folded characters, blanks at the end kept: a pattern counts them.
std::string folded(std::string_view text) {
  std::string result = values::foldText(text);
  result.append(text.size() - values::rtrim(text).size(), ' ');
  return result;
}

/// The code point at `position`, which moves behind it. A broken byte stands for itself.
char32_t next(std::string_view text, std::size_t& position) {
  const auto lead = static_cast<unsigned char>(text[position++]);
  const int extra = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
  if (extra == 0 || position + static_cast<std::size_t>(extra) > text.size()) return lead;
  char32_t character = lead & (0x3FU >> extra);
  for (int i = 0; i < extra; ++i) character = character << 6 | (static_cast<unsigned char>(text[position++]) & 0x3FU);
  return character;
}

std::u32string decoded(std::string_view text) {
  std::u32string characters;
  for (std::size_t position = 0; position < text.size();) characters.push_back(next(text, position));
  return characters;
}

bool onlyBlanks(std::string_view text) { return text.find_first_not_of(' ') == std::string_view::npos; }

}  // namespace

SqlLikePattern::SqlLikePattern(std::string_view text) {
  using Kind = Element::Kind;
  const std::u32string pattern = decoded(folded(text));
  for (std::size_t i = 0; i < pattern.size();) {
    const char32_t c = pattern[i];
    if (c == U'[' && pattern.find(U']', i + 1) != std::u32string::npos) {
      i = readSet(pattern, i);
      continue;
    }
    ++i;
    if (c != U'%') {
      elements_.push_back({c == U'_' ? Kind::OneCharacter : Kind::Character, c, false, {}});
    } else if (elements_.empty() || elements_.back().kind != Kind::AnyText) {
      elements_.push_back({Kind::AnyText, 0, false, {}});
    }
  }
}

/// Reads the set that opens at `position`; gives the position behind it.
std::size_t SqlLikePattern::readSet(std::u32string_view pattern, std::size_t position) {
  Element set{Element::Kind::Set, 0, false, {}};
  std::size_t i = position + 1;
  if (pattern[i] == U'^') {
    set.negated = true;
    ++i;
  }
  const std::size_t end = pattern.find(U']', i);
  while (i < end) {
    const char32_t from = pattern[i];
    const bool range = i + 2 < end && pattern[i + 1] == U'-';
    set.ranges.emplace_back(from, range ? pattern[i + 2] : from);
    i += range ? 3 : 1;
  }
  elements_.push_back(std::move(set));
  return end + 1;
}

bool SqlLikePattern::accepts(const Element& element, char32_t character) {
  switch (element.kind) {
    case Element::Kind::Character: return element.character == character;
    case Element::Kind::OneCharacter: return true;
    case Element::Kind::Set:
      return element.negated != std::any_of(element.ranges.begin(), element.ranges.end(), [&](const auto& range) {
               return range.first <= character && character <= range.second;
             });
    case Element::Kind::AnyText: break;
  }
  return false;
}

/// After a mismatch only the last % can take one character more, so the walk never doubles.
bool SqlLikePattern::matches(std::string_view plain) const {
  constexpr auto kNone = static_cast<std::size_t>(-1);
  const std::string text = folded(plain);
  std::size_t position = 0;
  std::size_t element = 0;
  std::size_t retryElement = kNone;
  std::size_t retryPosition = 0;
  for (;;) {
    if (element == elements_.size() && onlyBlanks(std::string_view(text).substr(position))) return true;
    if (element < elements_.size() && elements_[element].kind == Element::Kind::AnyText) {
      retryElement = ++element;
      retryPosition = position;
      continue;
    }
    if (element < elements_.size() && position < text.size()) {
      std::size_t after = position;
      if (accepts(elements_[element], next(text, after))) {
        position = after;
        ++element;
        continue;
      }
    }
    if (retryElement == kNone || retryPosition >= text.size()) return false;
    next(text, retryPosition);
    position = retryPosition;
    element = retryElement;
  }
}

}  // namespace sqlite
