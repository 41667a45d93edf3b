#include "host/environment/Arguments.h"

#include <algorithm>

#include "dati/TypedNumber.h"
#include "host/environment/Errors.h"
#include "language/Language.h"
#include "values/Conversion.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace bukorval::host {
namespace {

bool onlyDigits(std::string_view text) {
  return !text.empty() && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

/// -12 and 12.50 and 12,50; not 007, 1e3 or .5: those are codes as likely as numbers.
bool looksLikeNumber(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  const auto point = text.find_first_of(".,");
  const auto integer = text.substr(0, point);
  if (!onlyDigits(integer) || (integer.size() > 1 && integer.front() == '0')) return false;
  return point == std::string_view::npos || onlyDigits(text.substr(point + 1));
}

values::Variant parseNumber(std::string_view text) {
  const auto number = typedDecimal(text, values::kDefaultSeparator);
  constexpr int kIntegerDigits = 9;
  if (number.scale() == 0 && number.integerDigits() <= kIntegerDigits) return *number.toScaled(0);
  return number;
}

values::Variant parseDate(std::string_view text) {
  const auto date = values::Date::TryParse(text.substr(1, text.size() - 2));
  if (!date) throw UsageError(tr("{} is not a date", text));
  return *date;
}

bool isEnclosed(std::string_view text, char mark) {
  return text.size() >= 2 && text.front() == mark && text.back() == mark;
}

}  // namespace

values::Decimal typedDecimal(std::string_view text, char separator) {
  try {
    return *values::Decimal::TryParse(dati::typedNumber(text, separator));
  } catch (const values::Errore& e) {
    throw UsageError(e.what());
  }
}

values::Decimal parsePercentage(std::string_view text, char separator) {
  const auto percentage = typedDecimal(text, separator);
  if (percentage < values::Decimal::FromScaled(-100) || percentage > values::Decimal::FromScaled(1000))
    throw UsageError(tr("A percentage is -100 to 1000, not {}", values::toPlainText(values::Variant(percentage))));
  return percentage;
}

values::Variant parseArgument(std::string_view text) {
  if (text == "NULL") return values::Variant::Null();
  if (text == "EMPTY") return {};
  if (isEnclosed(text, '\'')) return text.substr(1, text.size() - 2);
  if (isEnclosed(text, '#')) return parseDate(text);
  if (looksLikeNumber(values::trim(text))) return parseNumber(values::trim(text));
  return text;
}

std::vector<std::string> split(std::string_view list) {
  std::vector<std::string> parts;
  while (!list.empty()) {
    const auto end = std::min(list.find(','), list.size());
    parts.emplace_back(values::trim(list.substr(0, end)));
    list.remove_prefix(std::min(end + 1, list.size()));
  }
  return parts;
}

ado::DictionaryPtr parseDictionary(std::string_view text) {
  auto dictionary = std::make_shared<ado::Dictionary>();
  while (!text.empty()) {
    const auto item = values::trim(text.substr(0, text.find(',')));
    text.remove_prefix(std::min(text.size(), text.substr(0, text.find(',')).size() + 1));
    const auto equals = item.find('=');
    const auto key = parseArgument(item.substr(0, equals));
    const auto value = equals == std::string_view::npos ? key : parseArgument(item.substr(equals + 1));
    if (dictionary->Exists(key)) throw UsageError(tr("'{}' stands twice", item));
    dictionary->Add(key, value);
  }
  return dictionary;
}

values::Variant parseAs(std::string_view text, TipoDato type, std::string_view name) {
  switch (type) {
    case TipoDato::Variant: return parseArgument(text);
    case TipoDato::String: return text;
    case TipoDato::Integer:
    case TipoDato::Long:
    case TipoDato::Boolean: return text == "EMPTY" ? values::Variant() : values::Variant(text);
    case TipoDato::Dictionary: return std::shared_ptr<values::Object>(parseDictionary(text));
    default: throw UsageError(tr("{} cannot be given as text", name));
  }
}

bool canBeText(TipoDato type) {
  return type == TipoDato::Variant || type == TipoDato::String || type == TipoDato::Integer || type == TipoDato::Long ||
         type == TipoDato::Boolean || type == TipoDato::Dictionary;
}

}  // namespace bukorval::host
