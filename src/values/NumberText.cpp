#include "values/NumberText.h"

#include <algorithm>

#include "values/Decimal.h"
#include "values/Errore.h"
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

std::string withDecimals(const Decimal& number, int decimals) {
  std::string text = number.rounded(decimals).toString();
  const auto point = text.find('.');
  auto present = point == std::string::npos ? 0 : text.size() - point - 1;
  if (present == 0 && decimals > 0) text += '.';
  for (; present < static_cast<std::size_t>(decimals); ++present) text += '0';
  return text;
}

std::string groupedNumber(const Decimal& number, int decimals, char separator) {
  const auto plain = withDecimals(number, decimals);
  const auto point = plain.find('.');
  const auto integer = plain.substr(0, point);
  const std::size_t sign = integer.starts_with('-') ? 1 : 0;
  std::string text(integer.substr(0, sign));
  for (std::size_t i = sign; i < integer.size(); ++i) {
    if (i > sign && (integer.size() - i) % 3 == 0) text += separator == ',' ? '.' : ',';
    text += integer[i];
  }
  if (point != std::string::npos) text.append(1, separator).append(plain.substr(point + 1));
  return text;
}

std::optional<std::string> plainNumber(std::string_view text, char separator) {
  std::string number(trim(text));
  const char decimal = separator == '.' ? '.' : ',';
  const char grouping = decimal == '.' ? ',' : '.';
  const std::size_t sign = std::min(number.find(decimal), number.size());
  if (number.find(decimal, sign + 1) != std::string::npos || number.find(grouping, sign) != std::string::npos)
    return std::nullopt;
  if (number.find(grouping) != std::string::npos && !removeGrouping(number, grouping, sign)) return std::nullopt;
  std::replace(number.begin(), number.end(), ',', '.');
  return number;
}

std::string typedNumber(std::string_view text, char separator) {
  const std::string_view number = trim(text);
  const auto refuse = [&](const char* why) { return Errore("'" + std::string(number) + "' " + why); };
  const char grouping = separator == '.' ? ',' : '.';
  const std::size_t sign = number.find_first_of(".,");
  const bool single = sign != std::string_view::npos && number.find_first_of(".,", sign + 1) == std::string_view::npos;
  if (single && number[sign] == grouping) {
    const std::size_t start = number.find_first_not_of("+-");
    const bool groups = number.size() - sign == 4 && sign > start && sign - start <= 3 && number[start] != '0';
    if (groups)
      throw refuse("can be read as a whole number or with three decimals: leave the sign out or add decimals");
  }
  const auto plain = plainNumber(number, single ? number[sign] : separator);
  if (!plain || !Decimal::TryParse(*plain)) throw refuse("is not a number");
  return *plain;
}

}  // namespace values
