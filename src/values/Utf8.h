#pragma once

#include <cstddef>
#include <string_view>

namespace values {

/// A character of UTF-8.
struct Character {
  char32_t code = 0;
  std::size_t size = 1;  ///< bytes
  bool valid = true;     ///< else it is one byte that begins no character
};

/// The first character of a text that is not empty.
Character firstCharacter(std::string_view text);

/// Embeddings, overrides and isolates of the direction of writing.
bool turnsWriting(char32_t code);

}  // namespace values
