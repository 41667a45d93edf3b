#ifdef _WIN32

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

#include "dati/import/Converter.h"
#include "language/Language.h"
#include "values/Errore.h"
#include "values/WideText.h"

namespace bukorval::dati {
namespace {

constexpr UINT kWindows1252 = 1252;

struct CodePage {
  std::string_view name;
  UINT number;
};
constexpr std::array kCodePages{CodePage{"utf-8", CP_UTF8}, CodePage{"windows-1252", kWindows1252},
                                CodePage{"latin1", 28591}, CodePage{"latin9", 28605}, CodePage{"cp850", 850}};

std::optional<std::wstring> wideOf(std::string_view bytes, UINT page) {
  std::wstring wide(bytes.size(), L'\0');
  const int size = static_cast<int>(bytes.size());
  const int units = ::MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, bytes.data(), size, wide.data(), size);
  if (units == 0 && size > 0) return std::nullopt;
  wide.resize(static_cast<std::size_t>(units));
  // The system reads the holes of this code page as control characters.
  const auto isHole = [](wchar_t unit) { return unit >= 0x80 && unit <= 0x9F; };
  if (page == kWindows1252 && std::ranges::any_of(wide, isHole)) return std::nullopt;
  return wide;
}

/// Appends the text before the first bytes that the code page does not have, by halves.
void convertStart(std::string_view bytes, UINT page, std::string& text) {
  const auto isInside = [&](std::size_t at) {
    return page == CP_UTF8 && at < bytes.size() && (static_cast<unsigned char>(bytes[at]) & 0xC0) == 0x80;
  };
  std::size_t good = 0, bad = bytes.size();
  while (bad - good > 1) {
    auto middle = good + (bad - good) / 2;
    while (middle > good && isInside(middle)) --middle;
    if (middle == good) break;
    (wideOf(bytes.substr(good, middle - good), page) ? good : bad) = middle;
  }
  if (const auto start = wideOf(bytes.substr(0, good), page)) text += values::fromWide(*start);
}

/// The byte order mark tells the order; without one the low byte comes first.
bool convertUtf16(std::string_view bytes, std::string& text) {
  const bool swapped = bytes.starts_with("\xFE\xFF");
  std::wstring wide(bytes.size() / 2, L'\0');
  std::memcpy(wide.data(), bytes.data(), wide.size() * 2);
  if (swapped)
    for (auto& unit : wide) unit = static_cast<wchar_t>(unit << 8 | unit >> 8);
  if (wide.starts_with(L'\xFEFF')) wide.erase(0, 1);
  text += values::fromWide(wide);
  return bytes.size() % 2 == 0;
}

}  // namespace

bool convertToUtf8(std::string& bytes, std::string_view encoding, std::string& text) {
  if (encoding == "utf-16") return convertUtf16(bytes, text);
  for (const auto& page : kCodePages) {
    if (page.name != encoding) continue;
    const auto wide = wideOf(bytes, page.number);
    if (wide)
      text += values::fromWide(*wide);
    else
      convertStart(bytes, page.number, text);
    return wide.has_value();
  }
  throw values::Errore(tr("This system knows no encoding {}", encoding));
}

}  // namespace bukorval::dati

#endif
