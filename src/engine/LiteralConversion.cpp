#include "engine/LiteralConversion.h"

#include <charconv>
#include <cstdlib>

#include "engine/DateNumber.h"
#include "engine/Scaled.h"
#include "values/Decimal.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace engine {
namespace {

using tsql::Literal;
using tsql::Type;
using tsql::TypeKind;

std::string quoted(std::string_view text) { return "'" + std::string(text) + "'"; }

std::string inColumn(const Binding& binding) {
  return binding.column.empty() ? std::string() : " in column " + quoted(binding.column);
}

const char* kindName(Literal::Kind kind) {
  switch (kind) {
    case Literal::Kind::Integer: return "int";
    case Literal::Kind::Decimal: return "numeric";
    case Literal::Kind::Float: return "float";
    case Literal::Kind::Text: break;
  }
  return "varchar";
}

const char* integerName(int bits) { return bits <= 16 ? "smallint" : bits <= 32 ? "int" : "bigint"; }

/// The exact value of a number, or of a text that holds one.
Scaled exactNumber(const Literal& literal, const std::string& target) {
  if (literal.kind == Literal::Kind::Float) {
    const auto value = values::Decimal::TryParse(literal.text);
    const auto parsed = value ? parseScaled(value->toString()) : std::nullopt;
    if (!parsed) throw values::Errore("Arithmetic overflow error converting float to data type " + target);
    return *parsed;
  }
  const auto parsed = parseScaled(literal.text);
  if (parsed) return *parsed;
  if (literal.kind != Literal::Kind::Text) {
    throw values::Errore("The number " + quoted(literal.text) + " is out of the range for numeric representation");
  }
  if (target == "numeric") throw values::Errore("Error converting data type varchar to numeric");
  throw values::Errore("Conversion failed when converting the varchar value " + quoted(literal.text) +
                       " to data type " + target);
}

std::optional<std::int64_t> plainInteger(const std::string& text) {
  std::int64_t value = 0;
  const auto* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end) return std::nullopt;
  return value;
}

/// Units for a comparison: exact when they can be stored, else a real on the right side of every stored value.
BoundValue comparable(const Scaled& value, int scale) {
  const auto exact = rescale(value.units, value.scale, scale);
  if (!exact || !fitsInt64(*exact)) return value.units < 0 ? -1e30 : 1e30;
  if (value.scale <= scale) return static_cast<std::int64_t>(*exact);
  const Int128 step = powerOfTen(value.scale - scale);
  if (value.units % step == 0) return static_cast<std::int64_t>(*exact);
  const Int128 towardsZero = value.units / step;
  return static_cast<double>(towardsZero) + (value.units < 0 ? -0.5 : 0.5);
}

BoundValue stored(Int128 units) {
  if (!fitsInt64(units)) return unitsToText(units);
  return static_cast<std::int64_t>(units);
}

/// Units for a comparison with what may not fit 64 bits; a number beyond all of them stands for the last one.
BoundValue comparableWide(const Scaled& value, int scale) {
  const Int128 last = powerOfTen(kMaxDigits) - 1;
  return stored(rescale(value.units, value.scale, scale).value_or(value.units < 0 ? -last : last));
}

BoundValue toInteger(const Literal& literal, const Binding& binding) {
  const int bits = binding.target.precision == 0 ? 64 : binding.target.precision;
  if (literal.kind == Literal::Kind::Integer && !binding.assignment) {
    if (const auto value = plainInteger(literal.text)) return *value;
  }
  const std::string name = integerName(bits);
  if (literal.kind == Literal::Kind::Text && values::trim(literal.text).empty()) return std::int64_t{0};
  const Scaled value = exactNumber(literal, name);
  if (literal.kind == Literal::Kind::Text && value.scale > 0) {
    throw values::Errore("Conversion failed when converting the varchar value " + quoted(literal.text) +
                         " to data type " + name);
  }
  if (!binding.assignment) return comparable(value, 0);
  const Int128 whole = value.units / powerOfTen(value.scale);
  const Int128 limit = Int128{1} << (bits - 1);
  if (whole >= limit || whole < -limit) {
    throw values::Errore("Arithmetic overflow error converting " + std::string(kindName(literal.kind)) +
                         " to data type " + name + inColumn(binding));
  }
  return static_cast<std::int64_t>(whole);
}

BoundValue toDecimal(const Literal& literal, const Binding& binding) {
  const Type& type = binding.target;
  const Scaled value = exactNumber(literal, "numeric");
  if (!binding.assignment)
    return type.precision > kWordDigits ? comparableWide(value, type.scale) : comparable(value, type.scale);
  const auto units = rescale(value.units, value.scale, type.scale);
  if (!units || (type.precision > 0 && digitCount(*units) > type.precision && *units != 0)) {
    throw values::Errore("Arithmetic overflow error converting " + std::string(kindName(literal.kind)) +
                         " to data type numeric" + inColumn(binding));
  }
  return stored(*units);
}

BoundValue toFloat(const Literal& literal, const Binding&) {
  const std::string text(values::trim(literal.text));
  char* end = nullptr;
  const double value = text.empty() ? 0 : std::strtod(text.c_str(), &end);
  if (!text.empty() && end != text.c_str() + text.size()) {
    throw values::Errore("Error converting data type varchar to float");
  }
  return value;
}

BoundValue toText(const Literal& literal, const Binding& binding) {
  const auto width = static_cast<std::size_t>(binding.target.length);
  if (!binding.assignment || width == 0) return std::string_view(literal.text);
  const auto length = values::length(literal.text);
  if (length > width) {
    // Blanks that do not fit are dropped silently, any other character is not.
    if (values::length(values::rtrim(literal.text)) > width) {
      throw values::Errore("String or binary data would be truncated" + inColumn(binding) +
                           ". Truncated value: " + quoted(values::left(literal.text, width)));
    }
    return values::left(literal.text, width);
  }
  if (binding.target.fixed && length < width) return values::padRight(literal.text, width);
  return std::string_view(literal.text);
}

BoundValue toDateTime(const Literal& literal, const Binding& binding) {
  if (literal.kind == Literal::Kind::Text) {
    try {
      return parseDateNumber(literal.text);
    } catch (const values::Errore& error) {
      throw values::Errore(error.what() + (": " + quoted(literal.text)) + inColumn(binding));
    }
  }
  const Scaled days = exactNumber(literal, "datetime");
  return dateNumberFromDays(static_cast<std::int64_t>(days.units / powerOfTen(days.scale)));
}

BoundValue toBit(const Literal& literal, const Binding& binding) {
  if (literal.kind == Literal::Kind::Text) {
    const auto word = values::trim(literal.text);
    if (values::compareText(word, "true") == 0) return std::int64_t{1};
    if (values::compareText(word, "false") == 0) return std::int64_t{0};
  }
  const Scaled value = exactNumber(literal, "bit");
  if (!binding.assignment) return comparable(value, 0);
  return std::int64_t{value.units != 0};
}

}  // namespace

BoundValue ownValue(const Literal& literal) {
  switch (literal.kind) {
    case Literal::Kind::Text: return std::string_view(literal.text);
    case Literal::Kind::Float: return toFloat(literal, {});
    case Literal::Kind::Integer:
      if (const auto value = plainInteger(literal.text)) return *value;
      break;
    case Literal::Kind::Decimal: break;
  }
  const Scaled value = exactNumber(literal, "numeric");
  return stored(value.units);
}

BoundValue convertedValue(const Literal& literal, const Binding& binding) {
  switch (binding.target.kind) {
    case TypeKind::Integer: return toInteger(literal, binding);
    case TypeKind::Decimal: return toDecimal(literal, binding);
    case TypeKind::Float: return toFloat(literal, binding);
    case TypeKind::Text: return toText(literal, binding);
    case TypeKind::DateTime: return toDateTime(literal, binding);
    case TypeKind::Bit: return toBit(literal, binding);
    case TypeKind::Unknown: break;
  }
  return ownValue(literal);
}

std::string_view likePrefix(std::string_view pattern) { return pattern.substr(0, pattern.find_first_of("%_[")); }

}  // namespace engine
