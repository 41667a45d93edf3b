#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "frame/TestoSql.h"

namespace bukorval::dati {

/// Identifiers as the lists of as many statements: "1, 2, 3", at most 500 in one.
inline std::vector<std::string> keyLists(const std::vector<std::int64_t>& keys) {
  constexpr std::size_t kKeysAtOnce = 500;
  std::vector<std::string> lists;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (i % kKeysAtOnce == 0)
      lists.push_back(numero(keys[i]));
    else
      lists.back().append(", ").append(numero(keys[i]));
  }
  return lists;
}

}  // namespace bukorval::dati
