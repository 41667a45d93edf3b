#ifdef _WIN32

#include <windows.h>

#include "values/WideText.h"

namespace values {

std::wstring toWide(std::string_view text) {
  const int size = static_cast<int>(text.size());
  // A character never takes more units than bytes.
  std::wstring wide(text.size(), L'\0');
  const int units = ::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), size);
  wide.resize(static_cast<std::size_t>(units));
  return wide;
}

std::string fromWide(std::wstring_view wide) {
  const int size = static_cast<int>(wide.size());
  std::string text(wide.size() * 3, '\0');
  const int bytes = ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, text.data(), size * 3, nullptr, nullptr);
  text.resize(static_cast<std::size_t>(bytes));
  return text;
}

}  // namespace values

#endif
