#include "postgres/LikeRegex.h"

#include "values/Text.h"

namespace postgres {
namespace {

bool isPlain(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == ' ' || static_cast<unsigned char>(c) >= 0x80;
}

/// The set between brackets; within one only a hyphen means more than itself.
std::string setRegex(std::string_view set) {
  std::string regex = "[";
  const bool negated = set.starts_with('^');
  if (negated) regex += '^';
  for (const char c : set.substr(negated ? 1 : 0)) {
    if (!isPlain(c) && c != '-') regex += '\\';
    regex += c;
  }
  return regex + "]";
}

}  // namespace

std::string foldedPattern(std::string_view text) {
  std::string folded = values::foldText(text);
  folded.append(text.size() - values::rtrim(text).size(), ' ');
  return folded;
}

std::string likeRegex(std::string_view pattern) {
  const std::string text = foldedPattern(pattern);
  std::string regex = "^";
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    const auto close = c == '[' ? text.find(']', i + 1) : std::string::npos;
    if (close != std::string::npos) {
      regex += setRegex(std::string_view(text).substr(i + 1, close - i - 1));
      i = close;
    } else if (c == '%') {
      regex += ".*";
    } else if (c == '_') {
      regex += '.';
    } else {
      if (!isPlain(c)) regex += '\\';
      regex += c;
    }
  }
  return regex + " *$";
}

}  // namespace postgres
