#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tsql {

enum class TypeKind { Unknown, Integer, Decimal, Float, Text, DateTime, Bit };

/// The type of a column or expression. Unknown is the type of NULL.
struct Type {
  TypeKind kind = TypeKind::Unknown;
  std::int16_t precision = 0;  ///< Decimal: digits in all. Integer: 16, 32 or 64 bits.
  std::int16_t scale = 0;      ///< Decimal: digits after the point.
  std::int32_t length = 0;     ///< Text: characters, 0 for unlimited.
  bool fixed = false;          ///< Text: CHAR and NCHAR.
  bool wide = false;           ///< Text: NCHAR and NVARCHAR.
  bool nullable = true;
};

Type integerType(int bits = 32);
/// More than 38 digits become 38.
Type decimalType(int precision, int scale);
Type textType(int length, bool wide = true);
Type bitType();
Type floatType();
Type dateTimeType();

/// Exact numbers.
inline bool isNumeric(const Type& type) {
  return type.kind == TypeKind::Integer || type.kind == TypeKind::Decimal || type.kind == TypeKind::Bit;
}
inline int scaleOf(const Type& type) { return type.kind == TypeKind::Decimal ? type.scale : 0; }
/// Digits in all.
int precisionOf(const Type& type);

/// Reads "DECIMAL(15,2)", "NVARCHAR(40)". Throws values::Errore for a type that is not known.
Type parseType(std::string_view text);
/// The type as a column declares it, and as messages name it.
std::string typeName(const Type& type);

}  // namespace tsql
