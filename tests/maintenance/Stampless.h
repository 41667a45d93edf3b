#pragma once

#include <regex>

#include "support/RecordingConnection.h"

namespace maintenance_tests {

/// The texts sent, the time of day replaced by a mark.
inline std::vector<std::string> stampless(const testing_support::RecordingConnection& db) {
  std::vector<std::string> texts;
  for (const auto& text : db.texts)
    texts.push_back(std::regex_replace(text, std::regex("'\\d{8}( \\d\\d:\\d\\d:\\d\\d)?'"), "NOW"));
  return texts;
}

}  // namespace maintenance_tests
