#pragma once

#include "tsql/Expression.h"
#include "tsql/Lexer.h"

/// SQL Server's rules for the types of computed values. They look at a literal's shape only as far as the text's key
/// tells shapes apart, so that texts with one key have one typing.
namespace tsql {

Type literalType(const Literal& literal);

/// The type that two branches or operands meet in: the one that ranks higher, with room for both.
Type unify(const Type& a, const Type& b);

/// The type that a value and a literal are compared in (two values are compared in what they unify to): the value's
/// own, unless the literal is a number beside a text or has more decimals.
Type comparisonType(const Type& value, const Literal& literal);

struct ArithmeticTypes {
  Type left, right;  ///< what each side becomes before it is computed with
  Type result;
};
/// @param divisorDigits  signs of the divisor when it is a literal, else 0: they decide a quotient's decimals.
ArithmeticTypes arithmeticTypes(ArithmeticOperator op, Type left, Type right, int divisorDigits);

/// The type of two texts set one behind the other.
Type concatenationType(const Type& left, const Type& right);

}  // namespace tsql
