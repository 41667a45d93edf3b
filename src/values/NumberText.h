#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "values/Decimal.h"

namespace values {

/// Exactly so many decimals, with a point: "-1234.50".
std::string withDecimals(const Decimal& number, int decimals);
/// The same as people read it, grouped by threes: 1.234.567,89, or 1,234,567.89 with a point as the separator.
std::string groupedNumber(const Decimal& number, int decimals, char separator);

/// Brings a number given as text to plain notation (point, no grouping, no blanks around). `separator` is the decimal
/// sign; of point and comma the other one groups the whole part by threes. Nothing when the signs stand otherwise;
/// the digits are not checked.
std::optional<std::string> plainNumber(std::string_view text, char separator);

/// The plain notation of a number that a person typed, read by the separator; a single sign that can only be decimal
/// ("12.5" where the comma is) is. Throws Errore for what is no number and for what could be read two ways: "1.000"
/// where the comma is the decimal sign.
std::string typedNumber(std::string_view text, char separator);

}  // namespace values
