#include "host/output/CellText.h"

#include <string_view>

#include "host/output/SafeText.h"
#include "language/Language.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::host {
namespace {

/// Exactly `decimals` decimals, with a point.
std::string withDecimals(const values::Decimal& number, int decimals) {
  std::string text = number.rounded(decimals).toString();
  const auto point = text.find('.');
  auto present = point == std::string::npos ? 0 : text.size() - point - 1;
  if (present == 0 && decimals > 0) text += '.';
  for (; present < static_cast<std::size_t>(decimals); ++present) text += '0';
  return text;
}

/// 1234567.89 as 1.234.567,89 (or 1,234,567.89 with a point as the decimal sign).
std::string grouped(std::string_view number, char separator) {
  const auto point = number.find('.');
  const auto integer = number.substr(0, point);
  const std::size_t sign = integer.starts_with('-') ? 1 : 0;
  std::string text(integer.substr(0, sign));
  for (std::size_t i = sign; i < integer.size(); ++i) {
    if (i > sign && (integer.size() - i) % 3 == 0) text += separator == ',' ? '.' : ',';
    text += integer[i];
  }
  if (point != std::string_view::npos) text.append(1, separator).append(number.substr(point + 1));
  return text;
}

std::string isoDate(const values::Date& date) {
  const std::string digits = date.toSql();
  std::string text = digits.substr(0, 4) + "-" + digits.substr(4, 2) + "-" + digits.substr(6, 2);
  if (date.hasTime()) text += "T" + digits.substr(9);
  return text;
}

}  // namespace

std::string humanText(const values::Variant& value, const Column& column, char separator) {
  if (value.isNothing()) return "";
  if (const auto* boolean = value.get_if<bool>()) return tr(*boolean ? "Yes" : "No");
  if (const auto* text = value.get_if<std::string>(); text && column.words) return std::string(translated(*text));
  if (!column.number || !value.isNumber()) return safeText(values::rtrim(values::toText(value, separator)));
  const auto number = values::toDecimal(value);
  if (column.percentage) {
    return grouped(withDecimals(number * values::Decimal::FromScaled(100), column.decimals - 2), separator);
  }
  // Codes and identifiers are numbers that nobody groups.
  const std::string text = withDecimals(number, column.decimals);
  return column.decimals == 0 ? text : grouped(text, separator);
}

std::string plainText(const values::Variant& value, const Column& column) {
  if (value.isNothing()) return "";
  if (const auto* boolean = value.get_if<bool>()) return *boolean ? "true" : "false";
  if (const auto* date = value.get_if<values::Date>()) return isoDate(*date);
  if (value.isNumber() && column.decimals > 0) return withDecimals(values::toDecimal(value), column.decimals);
  return values::toPlainText(value);
}

}  // namespace bukorval::host
