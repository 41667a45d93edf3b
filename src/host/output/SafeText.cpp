#include "host/output/SafeText.h"

#include <array>
#include <cstddef>
#include <utility>

namespace bukorval::host {
namespace {

struct Range {
  char32_t first, last;
};
/// C0, DEL and C1; embeddings, overrides and isolates of the direction of writing.
constexpr std::array kObeyed{Range{0x00, 0x1F}, Range{0x7F, 0x9F}, Range{0x202A, 0x202E}, Range{0x2066, 0x2069}};
constexpr std::array<std::pair<char32_t, char>, 3> kShort{{{'\n', 'n'}, {'\r', 'r'}, {'\t', 't'}}};

bool isObeyed(char32_t c) {
  for (const auto& range : kObeyed)
    if (c >= range.first && c <= range.last) return true;
  return false;
}

struct Character {
  char32_t code = 0;
  std::size_t size = 1;
  bool valid = true;
};

/// The first character of a text that is not empty.
Character firstOf(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const auto lead = byte(0);
  if (lead < 0x80) return {lead};
  Character character{lead, lead >= 0xF0 ? 4U : lead >= 0xE0 ? 3U : 2U};
  if (lead < 0xC2 || lead > 0xF4 || character.size > text.size()) return {lead, 1, false};
  character.code = lead & (0x7FU >> character.size);
  for (std::size_t i = 1; i < character.size; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return {lead, 1, false};
    character.code = character.code << 6 | (byte(i) & 0x3F);
  }
  return character;
}

std::string escaped(const Character& character) {
  for (const auto& [code, letter] : kShort)
    if (character.code == code) return {'\\', letter};
  const bool byte = character.size == 1;
  std::string text = byte ? "\\x" : "\\u";
  for (int shift = byte ? 4 : 12; shift >= 0; shift -= 4) text += "0123456789ABCDEF"[character.code >> shift & 0xF];
  return text;
}

}  // namespace

std::string safeText(std::string_view text, Lines lines) {
  std::string safe;
  safe.reserve(text.size());
  while (!text.empty()) {
    const auto character = firstOf(text);
    const bool kept = lines == Lines::Keep && (character.code == '\n' || text.starts_with("\r\n"));
    if (kept || (character.valid && !isObeyed(character.code)))
      safe += text.substr(0, character.size);
    else
      safe += escaped(character);
    text.remove_prefix(character.size);
  }
  return safe;
}

}  // namespace bukorval::host
