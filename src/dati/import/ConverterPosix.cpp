#ifndef _WIN32

#include <iconv.h>

#include <array>
#include <cerrno>

#include "dati/import/Converter.h"
#include "language/Language.h"
#include "values/Errore.h"

namespace bukorval::dati {
namespace {

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

}  // namespace

bool convertToUtf8(std::string& bytes, std::string_view encoding, std::string& text) {
  return Converter(encoding).convert(bytes, text);
}

}  // namespace bukorval::dati

#endif
