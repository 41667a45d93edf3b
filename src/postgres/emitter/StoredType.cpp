#include "postgres/emitter/StoredType.h"

#include <algorithm>
#include <array>

#include "engine/SqlWords.h"
#include "tsql/Names.h"
#include "values/Errore.h"

namespace postgres {
namespace {

using tsql::Type;
using tsql::TypeKind;

bool hasSmallLetter(std::string_view name) {
  return std::ranges::any_of(name, [](char c) { return c >= 'a' && c <= 'z'; });
}
bool hasCapital(std::string_view name) {
  return std::ranges::any_of(name, [](char c) { return c >= 'A' && c <= 'Z'; });
}

/// What the server adds to the sizes it stores.
constexpr int kModifierOffset = 4;

std::string sized(std::string_view name, int length) {
  return std::string(name) + (length > 0 ? "(" + std::to_string(length) + ")" : "");
}

std::string textType(const Type& type) {
  if (type.length == 0) return "text";
  return sized(type.fixed ? "character" : "character varying", type.length);
}

}  // namespace

std::string storedName(std::string_view name) {
  std::string stored(name);
  if (!hasSmallLetter(name))
    for (char& c : stored)
      if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return stored;
}

std::string shownName(std::string_view stored) {
  return hasCapital(stored) ? std::string(stored) : tsql::upperName(stored);
}

std::string sqlName(std::string_view name) { return engine::quotedName(storedName(name)); }

std::string declaredType(const Type& type) {
  switch (type.kind) {
    case TypeKind::Decimal: return "numeric(" + std::to_string(type.precision) + "," + std::to_string(type.scale) + ")";
    case TypeKind::Text: return textType(type) + " COLLATE \"C\"";
    case TypeKind::Unknown: throw values::Errore("A column needs a type");
    default: return castType(type);
  }
}

std::string castType(const Type& type) {
  switch (type.kind) {
    case TypeKind::Integer: return type.precision == 16 ? "int2" : type.precision == 32 ? "int4" : "int8";
    case TypeKind::Decimal: return "numeric";
    case TypeKind::Float: return "float8";
    case TypeKind::Text: return type.fixed ? textType(type) : "text";
    case TypeKind::DateTime: return "timestamp(0)";
    case TypeKind::Bit: return "boolean";
    case TypeKind::Unknown: break;
  }
  return "text";
}

Oid parameterType(const Type& type) {
  switch (type.kind) {
    case TypeKind::Integer: return type.precision == 16 ? kInt2 : type.precision == 32 ? kInt4 : kInt8;
    case TypeKind::Decimal: return kNumeric;
    case TypeKind::Float: return kFloat8;
    case TypeKind::DateTime: return kTimestamp;
    case TypeKind::Bit: return kBoolean;
    case TypeKind::Text: return type.fixed ? kBlankPadded : kText;
    case TypeKind::Unknown: break;
  }
  return kText;
}

Type typeOf(Oid type, int modifier, bool wide) {
  const int length = modifier < kModifierOffset ? 0 : modifier - kModifierOffset;
  switch (type) {
    case kBoolean: return tsql::bitType();
    case kInt2: return tsql::integerType(16);
    case kInt4: return tsql::integerType(32);
    case kInt8: return tsql::integerType(64);
    case kFloat8: return tsql::floatType();
    case kNumeric:
      return modifier < kModifierOffset ? tsql::decimalType(38, 6)
                                        : tsql::decimalType(length >> 16 & 0xFFFF, length & 0x7FF);
    case kTimestamp: return tsql::dateTimeType();
    case kBlankPadded: {
      Type fixed = tsql::textType(length, wide);
      fixed.fixed = length > 0;
      return fixed;
    }
    case kVarying: return tsql::textType(length, wide);
    case kText: return tsql::textType(0, wide);
    default: return {};
  }
}

}  // namespace postgres
