#include "values/NumberText.h"

#include <algorithm>

#include "values/Text.h"

namespace values {

namespace {

/// Removes `sign` from the digits before the decimal sign; false when it does not group them by threes.
bool removeGrouping(std::string& number, char sign, std::size_t end) {
  std::size_t first = number.find(sign);
  const std::size_t start = !number.empty() && (number[0] == '-' || number[0] == '+') ? 1 : 0;
  if (first == start || first - start > 3) return false;
  for (std::size_t at = first; at < end; at += 4) {
    if (number[at] != sign || at + 4 > end) return false;
    const auto digits = number.substr(at + 1, 3);
    if (!std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; })) return false;
  }
  number.erase(std::remove(number.begin(), number.end(), sign), number.end());
  return true;
}

}  // namespace

std::optional<std::string> plainNumber(std::string_view text, char separator) {
  std::string number(trim(text));
  const auto points = std::count(number.begin(), number.end(), '.');
  const auto commas = std::count(number.begin(), number.end(), ',');
  if (points + commas <= 1) {
    std::replace(number.begin(), number.end(), ',', '.');
    return number;
  }
  const char decimal = separator == '.' ? '.' : ',';
  const char grouping = decimal == '.' ? ',' : '.';
  const auto decimals = decimal == '.' ? points : commas;
  if (decimals > 1) return std::nullopt;
  const std::size_t sign = number.find(decimal);
  const std::size_t end = sign == std::string::npos ? number.size() : sign;
  if (number.rfind(grouping) > end || !removeGrouping(number, grouping, end)) return std::nullopt;
  std::replace(number.begin(), number.end(), ',', '.');
  return number;
}

}  // namespace values
