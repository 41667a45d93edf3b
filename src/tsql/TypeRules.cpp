#include "tsql/TypeRules.h"

#include <algorithm>

namespace tsql {
namespace {

constexpr int kWidest = 38;
/// Decimals that a quotient keeps even when its digits become too many.
constexpr int kQuotientDecimals = 6;

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

Type quotientType(const Type& a, const Type& b, int divisorDigits) {
  const int digits = divisorDigits > 0 && scaleOf(b) == 0 ? divisorDigits : precisionOf(b);
  const int whole = precisionOf(a) - scaleOf(a) + scaleOf(b);
  int scale = std::max(kQuotientDecimals, scaleOf(a) + digits + 1);
  // More than 38 digits in all: decimals give way, but six of them stay.
  if (whole + scale > kWidest) scale = std::max(std::min(scale, kWidest - whole), kQuotientDecimals);
  return decimalType(kWidest, scale);
}

}  // namespace

Type literalType(const Literal& literal) {
  const int digits = static_cast<int>(literal.text.size());
  switch (literal.kind) {
    case Literal::Kind::Integer:
      if (digits <= 9) return integerType();
      if (digits <= 18) return decimalType(18, 0);
      return decimalType(kWidest, 0);
    case Literal::Kind::Decimal: return decimalType(digits <= 18 ? 18 : kWidest, literal.scale);
    case Literal::Kind::Float: return floatType();
    case Literal::Kind::Text: break;
  }
  return textType(0);
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

Type comparisonType(const Type& value, const Literal& literal) {
  const Type other = literalType(literal);
  // A text beside a number is read as a number; text that is none is an error.
  if (value.kind == TypeKind::Text && other.kind != TypeKind::Text)
    return other.kind == TypeKind::Integer ? decimalType(18, 0) : other;
  if (value.kind == TypeKind::Unknown) return other;
  if (isNumeric(value) && other.kind == TypeKind::Decimal && other.scale > scaleOf(value))
    return decimalType(precisionOf(value) + other.scale, other.scale);
  return value;
}

ArithmeticTypes arithmeticTypes(ArithmeticOperator op, Type left, Type right, int divisorDigits) {
  // Text among numbers is read as a number of the other's type.
  if (left.kind == TypeKind::Text) left = right;
  if (right.kind == TypeKind::Text) right = left;
  if (left.kind == TypeKind::Float || right.kind == TypeKind::Float) return {floatType(), floatType(), floatType()};
  if (left.kind != TypeKind::Decimal && right.kind != TypeKind::Decimal)
    return {left, right, unify(unify(left, right), integerType())};
  if (op == ArithmeticOperator::Divide) return {left, right, quotientType(left, right, divisorDigits)};
  if (op == ArithmeticOperator::Multiply)
    return {left, right,
            decimalType(precisionOf(left) + precisionOf(right) + 1, std::min(scaleOf(left) + scaleOf(right), kWidest))};
  const Type common = unify(left, right);
  if (op == ArithmeticOperator::Modulo) return {common, common, common};
  return {common, common, decimalType(common.precision + 1, common.scale)};
}

Type concatenationType(const Type& left, const Type& right) {
  const bool unlimited = left.length == 0 || right.length == 0;
  return textType(unlimited ? 0 : left.length + right.length, left.wide || right.wide);
}

}  // namespace tsql
