#include "sqlite/functions/FunctionSupport.h"

namespace sqlite {

Int128 unitsArgument(sqlite3_value* value) {
  if (sqlite3_value_type(value) == SQLITE_INTEGER) return sqlite3_value_int64(value);
  if (sqlite3_value_type(value) == SQLITE_TEXT) {
    if (const auto units = parseUnits(textArgument(value))) return *units;
  }
  throw values::Errore("Error converting data type varchar to numeric");
}

void resultUnits(sqlite3_context* context, Int128 units) {
  if (fitsInt64(units)) {
    sqlite3_result_int64(context, static_cast<sqlite3_int64>(units));
  } else {
    if (digitCount(units) > kMaxDigits) throw values::Errore(kNumericOverflow);
    resultText(context, unitsToText(units));
  }
}

void resultText(sqlite3_context* context, std::string_view text) {
  sqlite3_result_text64(context, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

}  // namespace sqlite
