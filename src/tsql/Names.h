#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tsql {

constexpr char upperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

/// Names are the same without regard to case.
constexpr bool sameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (upperAscii(a[i]) != upperAscii(b[i])) return false;
  return true;
}

inline std::string upperName(std::string_view name) {
  std::string upper(name);
  for (char& c : upper) c = upperAscii(c);
  return upper;
}

}  // namespace tsql
