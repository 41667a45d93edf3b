#pragma once

#include "support/Test.h"

namespace testing_support {

/// Rows of a table, each "input => output"; both sides without the blanks around the mark.
inline std::vector<std::pair<std::string, std::string>> inOut(std::initializer_list<std::string_view> rows) {
  std::vector<std::pair<std::string, std::string>> pairs;
  for (const auto row : rows) {
    const auto at = row.find(" => ");
    pairs.emplace_back(row.substr(0, at), row.substr(at + 4));
  }
  return pairs;
}

}  // namespace testing_support
