#include "sqlite/emitter/Piece.h"

#include <algorithm>

namespace sqlite {
namespace {

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

std::string quotedName(std::string_view name) {
  std::string quoted = "\"";
  for (const char c : name) quoted.append(c == '"' ? 2 : 1, c);
  return quoted += '"';
}

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

}  // namespace sqlite
