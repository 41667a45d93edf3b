#include "values/Text.h"

#include <array>
#include <cstdint>

namespace values {

namespace {

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

/// Byte position after `count` characters from `from`.
std::size_t advance(std::string_view text, std::size_t from, std::size_t count) {
  std::size_t at = from;
  while (at < text.size() && count > 0) {
    ++at;
    while (at < text.size() && isContinuation(text[at])) ++at;
    --count;
  }
  return at;
}

/// Takes one character. A byte that starts none counts as itself, so that every text has an order.
char32_t next(std::string_view text, std::size_t& at) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned lead = byte(at);
  const std::size_t more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC2 ? 1 : 0;
  constexpr char32_t kStray = 0xDC00;
  char32_t code = lead & (0x3FU >> more);
  std::size_t i = at + 1;
  for (; i <= at + more && i < text.size() && isContinuation(text[i]); ++i) code = code << 6 | (byte(i) & 0x3FU);
  if (lead < 0x80) code = lead;
  if (lead >= 0x80 && (more == 0 || i != at + more + 1)) {
    ++at;
    return kStray + lead;
  }
  at = i;
  return code;
}

char32_t upper(char32_t c) {
  if (c < 0x80) return c >= 'a' && c <= 'z' ? c - 0x20 : c;
  if (c >= 0xE0 && c <= 0xFE) return c == 0xF7 ? c : c - 0x20;
  if (c == 0xFF) return 0x178;
  if (c < 0x100 || c > 0x17E || c == 0x131 || c == 0x138 || c == 0x149) return c;
  const bool oddIsUpper = (c >= 0x139 && c <= 0x148) || c >= 0x179;
  return (c % 2 == 1) != oddIsUpper ? c - 1 : c;
}

/// Base letters of U+00C0 to U+017F; a dot stands where there is none.
constexpr std::string_view kBaseLetters =
    "AAAAAAACEEEEIIIIDNOOOOO.OUUUUYTSAAAAAAACEEEEIIIIDNOOOOO.OUUUUYTY"
    "AAAAAACCCCCCCCDDDDEEEEEEEEEEGGGGGGGGHHHHIIIIIIIIIIIIJJKKKLLLLLLL"
    "LLLNNNNNNNNNOOOOOOOORRRRRRSSSSSSSSTTTTTTUUUUUUUUUUUUWWYYYZZZZZZS";
static_assert(kBaseLetters.size() == 0x180 - 0xC0);

/// Signs come before digits, digits before letters, whatever their codes are.
constexpr std::uint32_t asciiWeight(unsigned c) {
  const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  if (letter) return (0x300U + (c & 0x1FU)) << 21;
  if (c >= '0' && c <= '9') return (0x200U + c) << 21;
  return (0x100U + c) << 21;
}

constexpr std::array<std::uint32_t, 128> kAsciiWeights = [] {
  std::array<std::uint32_t, 128> weights{};
  for (unsigned c = 0; c < 128; ++c) weights[c] = asciiWeight(c);
  return weights;
}();

/// Accented letters weigh what their base letter does; everything else stands after Z.
std::uint32_t weight(char32_t folded) {
  if (folded < 0x80) return kAsciiWeights[folded];
  const char base = folded >= 0xC0 && folded < 0x180 ? kBaseLetters[folded - 0xC0] : '.';
  if (base != '.') return kAsciiWeights[static_cast<unsigned char>(base)];
  return 0x400U << 21 | static_cast<std::uint32_t>(folded);
}

bool isAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

void put(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else {
    out += static_cast<char>(0xC0 | c >> 6);
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

}  // namespace

std::string_view rtrim(std::string_view text) {
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

std::string_view trim(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  return rtrim(text);
}

std::size_t length(std::string_view text) {
  std::size_t count = 0;
  for (const char c : text)
    if (!isContinuation(c)) ++count;
  return count;
}

std::string_view left(std::string_view text, std::size_t count) { return text.substr(0, advance(text, 0, count)); }

std::string_view mid(std::string_view text, std::size_t start, std::size_t count) {
  const std::size_t from = advance(text, 0, start);
  return text.substr(from, advance(text, from, count) - from);
}

std::string padRight(std::string_view text, std::size_t width) {
  std::string out(left(text, width));
  const std::size_t have = length(out);
  if (have < width) out.append(width - have, ' ');
  return out;
}

namespace {

enum class Accents { Last, AtOnce };

template <Accents accentsDecide>
int compare(std::string_view a, std::string_view b) {
  a = rtrim(a);
  b = rtrim(b);
  std::size_t i = 0;
  std::size_t j = 0;
  int accents = 0;
  const auto order = [](std::uint32_t x, std::uint32_t y) { return x < y ? -1 : x > y ? 1 : 0; };
  while (i < a.size() && j < b.size()) {
    if (isAscii(a[i]) && isAscii(b[j])) {
      const auto x = static_cast<unsigned char>(a[i++]);
      const auto y = static_cast<unsigned char>(b[j++]);
      if (x != y && kAsciiWeights[x] != kAsciiWeights[y]) return order(kAsciiWeights[x], kAsciiWeights[y]);
      continue;
    }
    const char32_t x = upper(next(a, i));
    const char32_t y = upper(next(b, j));
    if (const int letters = order(weight(x), weight(y)); letters != 0) return letters;
    if (accents == 0) accents = order(x, y);
    if (accentsDecide == Accents::AtOnce && accents != 0) return accents;
  }
  return i < a.size() ? 1 : j < b.size() ? -1 : accents;
}

}  // namespace

int compareText(std::string_view a, std::string_view b) { return compare<Accents::Last>(a, b); }

int compareLetters(std::string_view a, std::string_view b) { return compare<Accents::AtOnce>(a, b); }

std::string foldText(std::string_view text) {
  text = rtrim(text);
  std::string out;
  out.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    if (isAscii(text[at])) {
      out += static_cast<char>(upper(static_cast<unsigned char>(text[at++])));
      continue;
    }
    const std::size_t from = at;
    const char32_t code = next(text, at);
    const char32_t folded = upper(code);
    if (folded == code) {
      out.append(text.substr(from, at - from));
    } else {
      put(out, folded);
    }
  }
  return out;
}

}  // namespace values
