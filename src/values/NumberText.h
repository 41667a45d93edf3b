#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace values {

/// Brings a number given as text to plain notation (point, no grouping, no blanks around). `separator` is the decimal
/// sign; of point and comma the other one groups the whole part by threes. Nothing when the signs stand otherwise;
/// the digits are not checked.
std::optional<std::string> plainNumber(std::string_view text, char separator);

/// The plain notation of a number that a person typed, read by the separator; a single sign that can only be decimal
/// ("12.5" where the comma is) is. Throws Errore for what is no number and for what could be read two ways: "1.000"
/// where the comma is the decimal sign.
std::string typedNumber(std::string_view text, char separator);

}  // namespace values
