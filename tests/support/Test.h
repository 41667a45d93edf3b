#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "values/Conversion.h"
#include "values/Errore.h"

/// What tests of every folder use.
using values::Date, values::Decimal, values::Variant;

namespace testing_support {

inline Decimal dec(std::string_view text) { return Decimal::TryParse(text).value(); }

/// The text of the error that an action raises; "" when it raises none.
inline std::string errorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const values::Errore& error) {
    return error.what();
  }
  return "";
}

using InOut = std::vector<std::pair<std::string, std::string>>;

/// Rows of a table, each "input => output"; both sides without the blanks around the mark.
template <class Rows = std::initializer_list<std::string_view>>
InOut inOut(const Rows& rows) {
  InOut pairs;
  for (const std::string_view row : rows) {
    const auto at = row.find(" =>");
    pairs.emplace_back(row.substr(0, at), row.substr(std::min(at + 4, row.size())));
  }
  return pairs;
}

/// The lines of a text file under tests/; without the empty ones and the remarks, which begin with "#".
inline std::vector<std::string> linesOf(const std::string& file) {
  std::ifstream in(std::string(BUKORVAL_SOURCE_DIR) + "/tests/" + file);
  EXPECT_TRUE(in.is_open()) << file;
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);)
    if (!line.empty() && line[0] != '#') lines.push_back(line);
  return lines;
}

}  // namespace testing_support

using testing_support::dec, testing_support::errorOf, testing_support::inOut, testing_support::linesOf;
