#include "values/Arithmetic.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "values/Conversion.h"
#include "values/Errore.h"

namespace values {

namespace {

/// The kind in which two values are computed.
enum class Level { Short, Whole, Double, Decimal };

Level levelOf(const Variant& value) {
  switch (value.kind()) {
    case Kind::Empty:
    case Kind::Int16: return Level::Short;
    case Kind::Boolean:
    case Kind::Int32: return Level::Whole;
    case Kind::Double: return Level::Double;
    case Kind::Decimal:
    case Kind::String: return Level::Decimal;
    default: throw Errore("Type mismatch: dates and objects take no arithmetic");
  }
}

Level common(const Variant& a, const Variant& b) { return std::max(levelOf(a), levelOf(b)); }

bool anyNull(const Variant& a, const Variant& b) { return a.isNull() || b.isNull(); }

Variant finite(double value) {
  if (!std::isfinite(value)) throw Errore("Overflow");
  return value;
}

/// One operation of two numbers, in the kind they share. Whole results that leave 32 bits become Decimals.
template <class Operation>
Variant compute(const Variant& a, const Variant& b, Operation operation) {
  if (anyNull(a, b)) return Variant::Null();
  switch (common(a, b)) {
    case Level::Short: {
      const std::int64_t result = operation(toInt64(a), toInt64(b));
      if (!a.isEmpty() && !b.isEmpty() && std::in_range<std::int16_t>(result)) return static_cast<std::int16_t>(result);
      return result;
    }
    case Level::Whole: return operation(toInt64(a), toInt64(b));
    case Level::Double: return finite(operation(toDouble(a), toDouble(b)));
    case Level::Decimal: break;
  }
  return operation(toDecimal(a), toDecimal(b));
}

template <class T>
int order(const T& a, const T& b) {
  return a < b ? -1 : b < a ? 1 : 0;
}

int compareNumbers(const Variant& a, const Variant& b) {
  const auto isWhole = [](const Variant& v) { return levelOf(v) <= Level::Whole; };
  if (isWhole(a) && isWhole(b)) return order(toInt64(a), toInt64(b));
  const bool doubles = a.kind() == Kind::Double || b.kind() == Kind::Double;
  constexpr double kDecimalRange = 7e28;
  const auto fits = [](const Variant& v) {
    return v.kind() != Kind::Double || std::fabs(v.as<double>()) < kDecimalRange;
  };
  if (a.kind() == b.kind() && doubles) return order(a.as<double>(), b.as<double>());
  if (doubles && !(fits(a) && fits(b))) return order(toDouble(a), toDouble(b));
  return order(toDecimal(a), toDecimal(b));
}

}  // namespace

Variant add(const Variant& a, const Variant& b) {
  return compute(a, b, [](const auto& x, const auto& y) { return x + y; });
}
Variant subtract(const Variant& a, const Variant& b) {
  return compute(a, b, [](const auto& x, const auto& y) { return x - y; });
}
Variant multiply(const Variant& a, const Variant& b) {
  return compute(a, b, [](const auto& x, const auto& y) { return x * y; });
}

Variant divide(const Variant& a, const Variant& b) {
  if (anyNull(a, b)) return Variant::Null();
  if (common(a, b) == Level::Decimal) return toDecimal(a) / toDecimal(b);
  const double divisor = toDouble(b);
  if (divisor == 0) throw Errore("Division by zero");
  return finite(toDouble(a) / divisor);
}

int compare(const Variant& a, const Variant& b) {
  if (anyNull(a, b)) throw Errore("Invalid use of Null");
  const auto isText = [](const Variant& v) { return v.kind() == Kind::String; };
  const auto isDate = [](const Variant& v) { return v.kind() == Kind::Date; };
  if ((isText(a) || a.isEmpty()) && (isText(b) || b.isEmpty())) return order(toText(a), toText(b));
  if (isDate(a) && isDate(b)) return order(a.as<Date>(), b.as<Date>());
  if (isDate(a) && (isText(b) || b.isNumber())) return order(a.as<Date>(), toDate(b));
  if (isDate(b) && (isText(a) || a.isNumber())) return order(toDate(a), b.as<Date>());
  return compareNumbers(a, b);
}

}  // namespace values
