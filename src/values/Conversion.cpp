#include "values/Conversion.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

#include "values/Errore.h"
#include "values/NumberText.h"
#include "values/Text.h"

namespace values {

namespace {

[[noreturn]] void mismatch(std::string_view what) { throw Errore("Type mismatch: " + std::string(what)); }

/// What a value that has no conversion is called in the message.
[[noreturn]] void noConversion(const Variant& value, std::string_view wanted) {
  switch (value.kind()) {
    case Kind::Null: throw Errore("Invalid use of Null");
    case Kind::Empty: mismatch("an empty value is no " + std::string(wanted));
    case Kind::String: mismatch("\"" + value.as<std::string>() + "\" is no " + std::string(wanted));
    case Kind::Date: mismatch(value.as<Date>().toText() + " is no " + std::string(wanted));
    case Kind::Boolean: mismatch("a Boolean is no " + std::string(wanted));
    case Kind::Object: mismatch("an object is no " + std::string(wanted));
    default: mismatch(toPlainText(value) + " is no " + std::string(wanted));
  }
}

constexpr int kSecondsPerDay = 86'400;

double dayFraction(const Date& date) {
  const int seconds = (date.hour() * 60 + date.minute()) * 60 + date.second();
  return date.dayNumber() + static_cast<double>(seconds) / kSecondsPerDay;
}

/// Halves to even.
Decimal wholeEven(const Decimal& value) {
  if (value.scale() == 0) return value;
  const Decimal rounded = value.rounded(0);
  const Decimal excess = rounded - value;
  const Decimal half = Decimal::FromScaled(5, 1);
  if (excess != half && excess != -half) return rounded;
  const Decimal down = rounded - Decimal::FromScaled(value.isNegative() ? -1 : 1);
  const Decimal two = Decimal::FromScaled(2);
  return rounded == (rounded / two).rounded(0) * two ? rounded : down;
}

template <class Int>
Int narrow(std::int64_t value) {
  if (!std::in_range<Int>(value)) throw Errore("Overflow");
  return static_cast<Int>(value);
}

template <class Int>
Int toWhole(const Variant& value, char separator) {
  switch (value.kind()) {
    case Kind::Int16: return narrow<Int>(value.as<std::int16_t>());
    case Kind::Int32: return narrow<Int>(value.as<std::int32_t>());
    case Kind::Double: {
      const double whole = std::nearbyint(value.as<double>());
      constexpr double kLimit = 9223372036854775808.0;
      if (!(whole >= -kLimit && whole < kLimit)) throw Errore("Overflow");
      return narrow<Int>(static_cast<std::int64_t>(whole));
    }
    default: {
      const std::optional<std::int64_t> whole = wholeEven(toDecimal(value, separator)).toScaled(0);
      if (!whole) throw Errore("Overflow");
      return narrow<Int>(*whole);
    }
  }
}

/// Decimals write every double a budget can hold; powers of ten are left to those they can't.
std::string doubleText(double value) {
  const double size = std::fabs(value);
  if (size == 0 || (size >= 1e-13 && size < 7.9e28)) return Decimal::FromDouble(value).toString();
  char text[64];
  char* const end = std::to_chars(text, text + sizeof text, value, std::chars_format::general, 15).ptr;
  std::string out(text, end);
  if (const std::size_t e = out.find('e'); e != std::string::npos) out[e] = 'E';
  return out;
}

std::optional<double> readDouble(const std::optional<std::string>& plain) {
  if (!plain || plain->find_first_not_of("0123456789.eE+-") != std::string::npos) return std::nullopt;
  const bool plus = plain->starts_with('+') && !plain->starts_with("+-");
  const std::string_view text = std::string_view(*plain).substr(plus ? 1 : 0);
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (end != text.data() + text.size() || error == std::errc::invalid_argument) return std::nullopt;
  if (error == std::errc::result_out_of_range) throw Errore("Overflow");
  return number;
}

std::string withSeparator(std::string text, char separator) {
  std::replace(text.begin(), text.end(), '.', separator);
  return text;
}

}  // namespace

std::string toText(const Variant& value, char separator) {
  switch (value.kind()) {
    case Kind::Empty: return {};
    case Kind::Int16: return std::to_string(value.as<std::int16_t>());
    case Kind::Int32: return std::to_string(value.as<std::int32_t>());
    case Kind::Double: return withSeparator(doubleText(value.as<double>()), separator);
    case Kind::Decimal: return withSeparator(value.as<Decimal>().toString(), separator);
    case Kind::Date: return value.as<Date>().toText();
    case Kind::String: return value.as<std::string>();
    case Kind::Boolean: return value.as<bool>() ? "True" : "False";
    case Kind::Null:
    case Kind::Object: break;
  }
  noConversion(value, "text");
}

std::string toPlainText(const Variant& value) { return value.isNull() ? std::string() : toText(value, '.'); }

Decimal toDecimal(const Variant& value, char separator) {
  switch (value.kind()) {
    case Kind::Empty: return {};
    case Kind::Int16: return Decimal::FromScaled(value.as<std::int16_t>());
    case Kind::Int32: return Decimal::FromScaled(value.as<std::int32_t>());
    case Kind::Double: return Decimal::FromDouble(value.as<double>());
    case Kind::Decimal: return value.as<Decimal>();
    case Kind::Date: return Decimal::FromDouble(dayFraction(value.as<Date>()));
    case Kind::Boolean: return Decimal::FromScaled(value.as<bool>() ? -1 : 0);
    case Kind::String:
      if (const auto plain = plainNumber(value.as<std::string>(), separator))
        if (const auto number = Decimal::TryParse(*plain)) return *number;
      break;
    case Kind::Null:
    case Kind::Object: break;
  }
  noConversion(value, "number");
}

double toDouble(const Variant& value, char separator) {
  switch (value.kind()) {
    case Kind::Double: return value.as<double>();
    case Kind::Date: return dayFraction(value.as<Date>());
    case Kind::String:
      if (const auto number = readDouble(plainNumber(value.as<std::string>(), separator))) return *number;
      noConversion(value, "number");
    default: return toDecimal(value, separator).toDouble();
  }
}

std::int16_t toInt16(const Variant& value, char separator) { return toWhole<std::int16_t>(value, separator); }
std::int32_t toInt32(const Variant& value, char separator) { return toWhole<std::int32_t>(value, separator); }
std::int64_t toInt64(const Variant& value, char separator) { return toWhole<std::int64_t>(value, separator); }

bool toBool(const Variant& value, char separator) {
  if (const bool* flag = value.get_if<bool>()) return *flag;
  if (const double* number = value.get_if<double>()) return *number != 0;
  if (const std::string* text = value.get_if<std::string>()) {
    if (compareText(trim(*text), "True") == 0) return true;
    if (compareText(trim(*text), "False") == 0) return false;
  }
  return !toDecimal(value, separator).isZero();
}

Date toDate(const Variant& value) {
  if (const Date* date = value.get_if<Date>()) return *date;
  if (const std::string* text = value.get_if<std::string>())
    if (const std::optional<Date> date = Date::TryParse(trim(*text))) return *date;
  if (!value.isNumber()) noConversion(value, "date");
  const double number = toDouble(value);
  constexpr double kFarthest = 3e6;
  if (!(std::fabs(number) < kFarthest)) throw Errore("Overflow");
  // The fraction counts forward from midnight whatever the sign of the day.
  int days = static_cast<int>(number);
  int seconds = static_cast<int>(std::nearbyint(std::fabs(number - days) * kSecondsPerDay));
  if (seconds == kSecondsPerDay) ++days, seconds = 0;
  const Date date = Date().addDays(days);
  return Date::FromYmd(date.year(), date.month(), date.day(), seconds / 3600, seconds / 60 % 60, seconds % 60);
}

bool isBlank(const Variant& value) {
  if (value.isNothing()) return true;
  const std::string* text = value.get_if<std::string>();
  return text && rtrim(*text).empty();
}

const Variant& nvl(const Variant& value, const Variant& ifNull) { return isBlank(value) ? ifNull : value; }

}  // namespace values
