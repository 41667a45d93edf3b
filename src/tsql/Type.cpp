#include "tsql/Type.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "tsql/Names.h"
#include "values/Errore.h"

namespace tsql {
namespace {

constexpr int kWidest = 38;

struct KnownType {
  std::string_view name;
  Type type;
};

constexpr Type ofBits(std::int16_t bits) { return {.kind = TypeKind::Integer, .precision = bits}; }
constexpr Type text(bool fixed, bool wide) {
  return {.kind = TypeKind::Text, .length = 1, .fixed = fixed, .wide = wide};
}

constexpr std::array kKnown = {
    KnownType{"TINYINT", ofBits(16)},
    KnownType{"SMALLINT", ofBits(16)},
    KnownType{"INT", ofBits(32)},
    KnownType{"INTEGER", ofBits(32)},
    KnownType{"BIGINT", ofBits(64)},
    KnownType{"DECIMAL", {.kind = TypeKind::Decimal, .precision = 18}},
    KnownType{"DEC", {.kind = TypeKind::Decimal, .precision = 18}},
    KnownType{"NUMERIC", {.kind = TypeKind::Decimal, .precision = 18}},
    KnownType{"FLOAT", {.kind = TypeKind::Float}},
    KnownType{"REAL", {.kind = TypeKind::Float}},
    KnownType{"CHAR", text(true, false)},
    KnownType{"VARCHAR", text(false, false)},
    KnownType{"NCHAR", text(true, true)},
    KnownType{"NVARCHAR", text(false, true)},
    KnownType{"DATETIME", {.kind = TypeKind::DateTime}},
    KnownType{"DATETIME2", {.kind = TypeKind::DateTime}},
    KnownType{"SMALLDATETIME", {.kind = TypeKind::DateTime}},
    KnownType{"DATE", {.kind = TypeKind::DateTime}},
    KnownType{"BIT", {.kind = TypeKind::Bit}},
};

int readNumber(std::string_view text, std::string_view whole) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size())
    throw values::Errore("Unknown type '" + std::string(whole) + "'");
  return value;
}

void readDecimal(Type& type, std::string_view sizes, std::string_view whole) {
  const auto comma = sizes.find(',');
  const int precision = readNumber(sizes.substr(0, comma), whole);
  const int scale = comma == std::string_view::npos ? 0 : readNumber(sizes.substr(comma + 1), whole);
  if (precision < 1 || precision > kWidest || scale < 0 || scale > precision)
    throw values::Errore("Impossible precision in '" + std::string(whole) + "'");
  type.precision = static_cast<std::int16_t>(precision);
  type.scale = static_cast<std::int16_t>(scale);
}

}  // namespace

Type integerType(int bits) { return ofBits(static_cast<std::int16_t>(bits)); }

Type decimalType(int precision, int scale) {
  return {.kind = TypeKind::Decimal,
          .precision = static_cast<std::int16_t>(std::min(precision, kWidest)),
          .scale = static_cast<std::int16_t>(scale)};
}

Type textType(int length, bool wide) { return {.kind = TypeKind::Text, .length = length, .wide = wide}; }
Type bitType() { return {.kind = TypeKind::Bit}; }
Type floatType() { return {.kind = TypeKind::Float}; }
Type dateTimeType() { return {.kind = TypeKind::DateTime}; }

int precisionOf(const Type& type) {
  switch (type.kind) {
    case TypeKind::Decimal: return type.precision;
    case TypeKind::Integer: return type.precision == 16 ? 5 : type.precision == 32 ? 10 : 19;
    case TypeKind::Bit: return 1;
    default: return kWidest;
  }
}

Type parseType(std::string_view text) {
  const auto open = text.find('(');
  const auto name = text.substr(0, open);
  const auto known = std::find_if(kKnown.begin(), kKnown.end(), [&](const auto& k) { return sameName(k.name, name); });
  if (known == kKnown.end()) throw values::Errore("Unknown type '" + std::string(text) + "'");
  Type type = known->type;
  if (open == std::string_view::npos) return type;
  const auto sizes = text.substr(open + 1, text.size() - open - 2);
  if (type.kind == TypeKind::Decimal) readDecimal(type, sizes, text);
  if (type.kind == TypeKind::Text) type.length = sameName(sizes, "MAX") ? 0 : readNumber(sizes, text);
  return type;
}

std::string typeName(const Type& type) {
  switch (type.kind) {
    case TypeKind::Unknown: return "NULL";
    case TypeKind::Integer: return type.precision == 16 ? "SMALLINT" : type.precision == 32 ? "INT" : "BIGINT";
    case TypeKind::Decimal: return "DECIMAL(" + std::to_string(type.precision) + "," + std::to_string(type.scale) + ")";
    case TypeKind::Float: return "FLOAT";
    case TypeKind::Text:
      return std::string(type.wide ? "N" : "") + (type.fixed ? "CHAR(" : "VARCHAR(") +
             (type.length == 0 ? "MAX" : std::to_string(type.length)) + ")";
    case TypeKind::DateTime: return "DATETIME";
    case TypeKind::Bit: return "BIT";
  }
  return {};
}

}  // namespace tsql
