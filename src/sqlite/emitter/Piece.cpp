#include "sqlite/emitter/Piece.h"

#include <algorithm>

#include "tsql/DeclaredType.h"

namespace ado::sqlite::dialect {
namespace {

constexpr int kWidest = 38;

int rank(TypeKind kind) {
  switch (kind) {
    case TypeKind::DateTime: return 6;
    case TypeKind::Float: return 5;
    case TypeKind::Decimal: return 4;
    case TypeKind::Integer: return 3;
    case TypeKind::Bit: return 2;
    case TypeKind::Text: return 1;
    case TypeKind::Unknown: return 0;
  }
  return 0;
}

}  // namespace

int precisionOf(const Type& type) {
  switch (type.kind) {
    case TypeKind::Decimal: return type.precision;
    case TypeKind::Integer: return type.precision == 16 ? 5 : type.precision == 32 ? 10 : 19;
    case TypeKind::Bit: return 1;
    default: return kWidest;
  }
}

Type integerType(int bits) { return {.kind = TypeKind::Integer, .precision = static_cast<std::int16_t>(bits)}; }

Type decimalType(int precision, int scale) {
  return {.kind = TypeKind::Decimal,
          .precision = static_cast<std::int16_t>(std::min(precision, kWidest)),
          .scale = static_cast<std::int16_t>(scale)};
}

Type textType(int length, bool wide) { return {.kind = TypeKind::Text, .length = length, .wide = wide}; }

Type unify(const Type& a, const Type& b) {
  if (a.kind == TypeKind::Unknown) return b;
  if (b.kind == TypeKind::Unknown) return a;
  const Type& higher = rank(a.kind) >= rank(b.kind) ? a : b;
  Type type = higher;
  type.nullable = a.nullable || b.nullable;
  if (a.kind == TypeKind::Text && b.kind == TypeKind::Text) {
    type.length = a.length == 0 || b.length == 0 ? 0 : std::max(a.length, b.length);
    type.fixed = a.fixed && b.fixed && a.length == b.length;
    type.wide = a.wide || b.wide;
  } else if (higher.kind == TypeKind::Decimal && isNumeric(a) && isNumeric(b)) {
    const int scale = std::max(scaleOf(a), scaleOf(b));
    const int whole = std::max(precisionOf(a) - scaleOf(a), precisionOf(b) - scaleOf(b));
    type = decimalType(whole + scale, scale);
  } else if (a.kind == TypeKind::Integer && b.kind == TypeKind::Integer) {
    type.precision = std::max(a.precision, b.precision);
  }
  return type;
}

bool sameStorage(const Type& a, const Type& b) {
  if (a.kind == TypeKind::Unknown) return true;
  if (isNumeric(a) && isNumeric(b)) return scaleOf(a) == scaleOf(b);
  return a.kind == b.kind;
}

std::string typeName(const Type& type) {
  if (type.kind == TypeKind::Unknown) return "NULL";
  if (type.kind == TypeKind::DateTime) return "DATETIME";
  if (type.kind == TypeKind::Decimal)
    return "DECIMAL(" + std::to_string(type.precision) + "," + std::to_string(type.scale) + ")";
  return declaredType(type);
}

}  // namespace ado::sqlite::dialect
