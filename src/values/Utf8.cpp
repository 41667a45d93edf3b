#include "values/Utf8.h"

namespace values {

Character firstCharacter(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const auto lead = byte(0);
  if (lead < 0x80) return {lead};
  Character character{lead, lead >= 0xF0 ? 4U : lead >= 0xE0 ? 3U : 2U};
  const Character invalid{lead, 1, false};
  if (lead < 0xC2 || lead > 0xF4 || character.size > text.size()) return invalid;
  character.code = lead & (0x7FU >> character.size);
  for (std::size_t i = 1; i < character.size; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return invalid;
    character.code = character.code << 6 | (byte(i) & 0x3F);
  }
  // A longer writing than needed, half of a pair, or beyond the last character.
  constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool half = character.code >= 0xD800 && character.code <= 0xDFFF;
  return character.code < kLeast[character.size] || half || character.code > 0x10FFFF ? invalid : character;
}

bool turnsWriting(char32_t code) { return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069); }

}  // namespace values
