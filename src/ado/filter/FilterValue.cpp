#include "ado/filter/FilterValue.h"

#include <cassert>
#include <utility>

#include "values/Errore.h"
#include "values/Text.h"

namespace ado {
namespace {

using values::Date;
using values::Decimal;
using values::Errore;
using values::Kind;
using values::Variant;

template <class T>
int order(const T& a, const T& b) {
  return a < b ? -1 : b < a ? 1 : 0;
}

FilterOrder orderWhole(std::int64_t cell, const FilterValue& value) {
  if (value.whole) return order(cell, *value.whole);
  if (value.number) return order(Decimal::FromScaled(cell), *value.number);
  return {};
}

FilterOrder orderDecimal(const Decimal& cell, const FilterValue& value) {
  return value.number ? FilterOrder(order(cell, *value.number)) : FilterOrder();
}

FilterOrder orderDouble(double cell, const FilterValue& value) {
  if (!value.number || cell != cell) return {};
  try {
    return order(Decimal::FromDouble(cell), *value.number);
  } catch (const Errore&) {
    return cell < 0 ? -1 : 1;  // beyond every number that a filter can hold
  }
}

FilterOrder orderText(const std::string& cell, const FilterValue& value) {
  switch (value.value.kind()) {
    case Kind::String: return values::compareText(cell, value.value.as<std::string>());
    case Kind::Decimal:
      if (const auto number = numberIn(cell)) return order(*number, *value.number);
      return {};
    case Kind::Date:
      if (const auto date = Date::TryParse(cell)) return order(*date, *value.date);
      return {};
    default: return {};
  }
}

FilterOrder orderBoolean(bool cell, const FilterValue& value) {
  if (const bool* flag = value.value.get_if<bool>()) return order(cell, *flag);
  return orderWhole(cell ? 1 : 0, value);
}

std::string keyOfNumber(const Decimal& number) { return number.normalized().toString(); }

std::string keyOfDay(const Date& date) { return date.dateOnly().toSql(); }

std::string keyOfText(const std::string& text) {
  // All from the folded form, so that equal texts have one key whatever they look like.
  std::string folded = values::foldText(text);
  if (const auto number = numberIn(folded)) return keyOfNumber(*number);
  if (const auto date = Date::TryParse(folded)) return keyOfDay(*date);
  return folded;
}

std::string keyOfDouble(double value) {
  try {
    return keyOfNumber(Decimal::FromDouble(value));
  } catch (const Errore&) {
    return {};
  }
}

}  // namespace

FilterValue::FilterValue(Variant written) : value(std::move(written)) {
  assert(value.kind() != Kind::Empty && value.kind() != Kind::Int16 && value.kind() != Kind::Int32 &&
         value.kind() != Kind::Double && value.kind() != Kind::Object);
  if (const auto* text = value.get_if<std::string>()) {
    number = numberIn(*text);
    date = Date::TryParse(*text);
  }
  if (const auto* decimal = value.get_if<Decimal>()) number = *decimal;
  if (const auto* day = value.get_if<Date>()) date = *day;
  if (number) whole = number->toScaled(0);
}

FilterOrder orderOf(const Variant& cell, const FilterValue& value) {
  switch (cell.kind()) {
    case Kind::Int16: return orderWhole(cell.as<std::int16_t>(), value);
    case Kind::Int32: return orderWhole(cell.as<std::int32_t>(), value);
    case Kind::Decimal: return orderDecimal(cell.as<Decimal>(), value);
    case Kind::Double: return orderDouble(cell.as<double>(), value);
    case Kind::String: return orderText(cell.as<std::string>(), value);
    case Kind::Boolean: return orderBoolean(cell.as<bool>(), value);
    case Kind::Date: return value.date ? FilterOrder(order(cell.as<Date>(), *value.date)) : FilterOrder();
    default: return {};
  }
}

std::string filterKey(const Variant& value) {
  switch (value.kind()) {
    case Kind::Int16: return std::to_string(value.as<std::int16_t>());
    case Kind::Int32: return std::to_string(value.as<std::int32_t>());
    case Kind::Boolean: return value.as<bool>() ? "1" : "0";
    case Kind::Double: return keyOfDouble(value.as<double>());
    case Kind::Decimal: return keyOfNumber(value.as<Decimal>());
    case Kind::Date: return keyOfDay(value.as<Date>());
    case Kind::String: return keyOfText(value.as<std::string>());
    default: return {};
  }
}

std::optional<Decimal> numberIn(std::string_view text) {
  text = values::trim(text);
  constexpr std::string_view kNumberStarts = "+-.0123456789";
  if (text.empty() || kNumberStarts.find(text.front()) == std::string_view::npos) return std::nullopt;
  try {
    return Decimal::TryParse(text);
  } catch (const Errore&) {
    return std::nullopt;  // too large for an amount: a text like any other
  }
}

}  // namespace ado
