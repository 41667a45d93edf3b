#pragma once

#include <optional>
#include <string>

#include "tsql/Translation.h"

namespace ado::sqlite::dialect {

/// An expression in SQLite's words with its SQL Server type. A literal has no words yet: what it is compared with or
/// written to decides how it is bound.
struct Piece {
  std::string sql;
  Type type;
  std::optional<std::size_t> literal{};
  bool null = false;    ///< the word NULL
  bool column = false;  ///< a plain column, which brings its collation

  static Piece ofNull() { return {"NULL", {}, std::nullopt, true, false}; }
};

inline bool isNumeric(const Type& type) {
  return type.kind == TypeKind::Integer || type.kind == TypeKind::Decimal || type.kind == TypeKind::Bit;
}
inline bool isExact(const Type& type) { return isNumeric(type); }
inline int scaleOf(const Type& type) { return type.kind == TypeKind::Decimal ? type.scale : 0; }
/// Digits in all.
int precisionOf(const Type& type);
/// Units that may not fit 64 bits: sums, and what is computed from them. They need functions instead of operators.
inline bool isWide(const Type& type) { return type.kind == TypeKind::Decimal && type.precision > 18; }

Type integerType(int bits = 32);
Type decimalType(int precision, int scale);
Type textType(int length, bool wide = true);

/// The type that two branches or operands meet in: the one SQL Server ranks higher, with room for both.
Type unify(const Type& a, const Type& b);
/// Stored alike, so that a value passes without conversion.
bool sameStorage(const Type& a, const Type& b);
std::string typeName(const Type& type);

}  // namespace ado::sqlite::dialect
