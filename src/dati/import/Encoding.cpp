#include "dati/import/Encoding.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include "language/Language.h"

namespace bukorval::dati {
namespace {

constexpr std::string_view kUtf8 = "utf-8";
constexpr std::array<std::string_view, 6> kEncodings{kUtf8, "windows-1252", "latin1", "latin9", "cp850", "utf-16"};

/// A converter of the C library, from an encoding to UTF-8.
class Converter {
 public:
  explicit Converter(std::string_view from) : handle_(iconv_open("UTF-8", std::string(from).c_str())) {
    // The library spells failure as the pointer -1.
    if (handle_ == reinterpret_cast<iconv_t>(-1)) throw values::Errore(tr("This system knows no encoding {}", from));
  }
  ~Converter() { iconv_close(handle_); }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  /// Converts what it can; false at bytes that the encoding does not have.
  bool convert(std::string& bytes, std::string& text) {
    std::array<char, 65536> block;
    char* from = bytes.data();
    std::size_t left = bytes.size();
    while (left > 0) {
      char* to = block.data();
      std::size_t room = block.size();
      const auto outcome = iconv(handle_, &from, &left, &to, &room);
      const bool full = outcome == static_cast<std::size_t>(-1) && errno == E2BIG;
      text.append(block.data(), block.size() - room);
      if (outcome == static_cast<std::size_t>(-1) && !full) return false;
    }
    return true;
  }

 private:
  iconv_t handle_;
};

/// Lines end with LF, CR LF or CR.
std::size_t lineAt(std::string_view text, std::size_t position) {
  std::size_t line = 1;
  for (std::size_t i = 0; i < position; ++i)
    if (text[i] == '\n' || (text[i] == '\r' && (i + 1 == text.size() || text[i + 1] != '\n'))) ++line;
  return line;
}

bool looksLikeUtf16(std::string_view bytes) { return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF"); }

}  // namespace

std::span<const std::string_view> encodings() { return kEncodings; }

std::string toUtf8(std::string bytes, std::string_view encoding) {
  std::string text;
  text.reserve(bytes.size());
  if (!Converter(encoding).convert(bytes, text))
    throw EncodingFault(lineAt(text, text.size()), encoding == kUtf8 && looksLikeUtf16(bytes)
                                                       ? tr("the text is utf-16, not utf-8")
                                                       : tr("the text is not {}", encoding));
  if (const auto zero = text.find('\0'); zero != std::string::npos)
    throw EncodingFault(lineAt(text, zero), tr("a character is zero: the file is no text, or not {}", encoding));
  return text;
}

}  // namespace bukorval::dati
