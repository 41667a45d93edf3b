#include "host/output/CellText.h"

#include <string_view>

#include "host/output/SafeText.h"
#include "language/Language.h"
#include "values/Conversion.h"
#include "values/NumberText.h"
#include "values/Text.h"

namespace bukorval::host {
namespace {

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
    return values::groupedNumber(number * values::Decimal::FromScaled(100), column.decimals - 2, separator);
  }
  // Codes and identifiers are numbers that nobody groups.
  return column.decimals == 0 ? values::withDecimals(number, 0)
                              : values::groupedNumber(number, column.decimals, separator);
}

std::string plainText(const values::Variant& value, const Column& column) {
  if (value.isNothing()) return "";
  if (const auto* boolean = value.get_if<bool>()) return *boolean ? "true" : "false";
  if (const auto* date = value.get_if<values::Date>()) return isoDate(*date);
  if (value.isNumber() && column.decimals > 0) return values::withDecimals(values::toDecimal(value), column.decimals);
  return values::toPlainText(value);
}

}  // namespace bukorval::host
