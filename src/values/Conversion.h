#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "values/Export.h"
#include "values/Variant.h"

/// Conversions between kinds. Failures throw Errore: "Type mismatch: …" for text that is no number or date,
/// "Invalid use of Null" for Null, "Overflow" for what does not fit.
/// `separator` is the session's decimal sign for numbers given or shown as text.
namespace values {

inline constexpr char kDefaultSeparator = ',';

/// Empty gives "", Null throws; decimals and doubles with `separator`; dates as Date::toText; True/False.
BUKORVAL_API std::string toText(const Variant& value, char separator = kDefaultSeparator);
/// The same, but a number always has a point and Null gives "".
BUKORVAL_API std::string toPlainText(const Variant& value);

/// A number in text: `separator` is its decimal sign, and the other one (comma or point) must group by threes: "1.234"
/// is 1234 with a comma as the decimal sign. Blanks around are ignored. Empty gives 0.
BUKORVAL_API Decimal toDecimal(const Variant& value, char separator = kDefaultSeparator);
BUKORVAL_API double toDouble(const Variant& value, char separator = kDefaultSeparator);
/// Halves round to even, as the suite's conversions do; "Overflow" beyond the range.
BUKORVAL_API std::int16_t toInt16(const Variant& value, char separator = kDefaultSeparator);
BUKORVAL_API std::int32_t toInt32(const Variant& value, char separator = kDefaultSeparator);
BUKORVAL_API std::int64_t toInt64(const Variant& value, char separator = kDefaultSeparator);
/// Numbers: not zero. Text: "True"/"False" or a number.
BUKORVAL_API bool toBool(const Variant& value, char separator = kDefaultSeparator);
/// A date, a text Date::TryParse reads, or a day number. Empty throws.
BUKORVAL_API Date toDate(const Variant& value);

/// Null, Empty and text of blanks give `ifNull`; anything else comes back unchanged.
BUKORVAL_API const Variant& nvl(const Variant& value, const Variant& ifNull);
/// True when nvl would replace the value.
BUKORVAL_API bool isBlank(const Variant& value);

}  // namespace values
