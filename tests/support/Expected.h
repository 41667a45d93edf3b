#pragma once

#include "support/Test.h"

namespace testing_support {

using Marks = std::vector<std::pair<std::string, std::string>>;

/// A text with each mark replaced.
inline std::string filled(std::string text, const Marks& marks) {
  for (const auto& [mark, value] : marks)
    for (auto at = text.find(mark); at != std::string::npos; at = text.find(mark, at + value.size()))
      text.replace(at, mark.size(), value);
  return text;
}

/// The statement in a file under tests/, with its marks filled in and the line ends that are sent.
inline std::string expected(const std::string& file, const Marks& marks = {}) {
  std::ifstream in(std::string(BUKORVAL_SOURCE_DIR) + "/tests/" + file);
  EXPECT_TRUE(in.is_open()) << file;
  std::string text;
  for (std::string line; std::getline(in, line);) text += line + (in.eof() ? "" : "\r\n");
  return filled(text, marks);
}

}  // namespace testing_support
