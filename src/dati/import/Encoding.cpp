#include "dati/import/Encoding.h"

#include <algorithm>
#include <array>
#include <utility>

#include "dati/import/Converter.h"
#include "language/Language.h"

namespace bukorval::dati {
namespace {

constexpr std::string_view kUtf8 = "utf-8";
constexpr std::array<std::string_view, 6> kEncodings{kUtf8, "windows-1252", "latin1", "latin9", "cp850", "utf-16"};

bool looksLikeUtf16(std::string_view bytes) { return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF"); }

}  // namespace

std::span<const std::string_view> encodings() { return kEncodings; }

std::size_t lineEnds(std::string_view text) {
  std::size_t ends = 0;
  for (std::size_t i = 0; i < text.size(); ++i)
    if (text[i] == '\n' || (text[i] == '\r' && (i + 1 == text.size() || text[i + 1] != '\n'))) ++ends;
  return ends;
}

std::string toUtf8(std::string bytes, std::string_view encoding) {
  std::string text;
  text.reserve(bytes.size());
  if (!convertToUtf8(bytes, encoding, text))
    throw EncodingFault(1 + lineEnds(text), encoding == kUtf8 && looksLikeUtf16(bytes)
                                                ? tr("the text is utf-16, not utf-8")
                                                : tr("the text is not {}", encoding));
  if (const auto zero = text.find('\0'); zero != std::string::npos)
    throw EncodingFault(1 + lineEnds(std::string_view(text).substr(0, zero)),
                        tr("a character is zero: the file is no text, or not {}", encoding));
  return text;
}

}  // namespace bukorval::dati
