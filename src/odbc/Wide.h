#pragma once

#include <string>
#include <string_view>

#include "odbc/Api.h"

namespace odbc {

/// Text for the wide calls of the driver manager, whose meaning does not hang on the program's locale.
/// Throws values::Errore when the text is not UTF-8.
std::u16string toWide(std::string_view text);
/// A lone surrogate, which no UTF-8 can hold, becomes the replacement character.
std::string fromWide(std::u16string_view wide);

/// The driver manager takes texts as pointers to non-constant units and leaves them alone.
inline SQLWCHAR* units(const std::u16string& text) {
  static_assert(sizeof(SQLWCHAR) == sizeof(char16_t));
  return reinterpret_cast<SQLWCHAR*>(const_cast<char16_t*>(text.data()));
}

}  // namespace odbc
