#include "host/output/SafeText.h"

#include <array>
#include <cstddef>
#include <utility>

#include "values/Utf8.h"

namespace bukorval::host {
namespace {

constexpr std::array<std::pair<char32_t, char>, 3> kShort{{{'\n', 'n'}, {'\r', 'r'}, {'\t', 't'}}};

/// C0, DEL and C1, and what turns the direction of writing.
bool isObeyed(char32_t c) { return c < 0x20 || (c >= 0x7F && c <= 0x9F) || values::turnsWriting(c); }

std::string escaped(const values::Character& character) {
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
    const auto character = values::firstCharacter(text);
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
