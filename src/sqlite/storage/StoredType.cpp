#include "sqlite/storage/StoredType.h"

#include "tsql/Names.h"
#include "values/Errore.h"

namespace sqlite {
namespace {

using tsql::Type;
using tsql::TypeKind;

constexpr std::string_view kIdentity = "CONSTRAINT \"identity ";
constexpr std::string_view kDateTime = "INTDATETIME";
constexpr std::string_view kBit = "BITINT";
/// Texts of any length, (MAX), for which the engine has no word.
constexpr std::string_view kText = "TEXT";
constexpr std::string_view kWideText = "NTEXT";

}  // namespace

bool sameStorage(const Type& a, const Type& b) {
  if (a.kind == TypeKind::Unknown) return true;
  if (tsql::isNumeric(a) && tsql::isNumeric(b)) return tsql::scaleOf(a) == tsql::scaleOf(b);
  return a.kind == b.kind;
}

std::string declaredType(const Type& type) {
  if (type.kind == TypeKind::Unknown) throw values::Errore("A column needs a type");
  if (isWide(type))
    throw values::Errore("The embedded database stores decimals of at most " + std::to_string(kStoredPrecision) +
                         " digits, not " + std::to_string(type.precision));
  if (type.kind == TypeKind::DateTime) return std::string(kDateTime);
  if (type.kind == TypeKind::Bit) return std::string(kBit);
  if (type.kind == TypeKind::Text && type.length == 0) return std::string(type.wide ? kWideText : kText);
  return tsql::typeName(type);
}

Type parseDeclaredType(std::string_view text) {
  if (tsql::sameName(text, kDateTime)) return tsql::dateTimeType();
  if (tsql::sameName(text, kBit)) return tsql::bitType();
  if (tsql::sameName(text, kText)) return tsql::textType(0, false);
  if (tsql::sameName(text, kWideText)) return tsql::textType(0, true);
  return tsql::parseType(text);
}

std::string identityConstraint(const Type& type) {
  return std::string(kIdentity) + declaredType(type) + "\" PRIMARY KEY AUTOINCREMENT";
}

std::optional<Type> identityType(std::string_view createStatement) {
  const auto start = createStatement.find(kIdentity);
  if (start == std::string_view::npos) return std::nullopt;
  const auto text = createStatement.substr(start + kIdentity.size());
  Type type = parseDeclaredType(text.substr(0, text.find('"')));
  type.nullable = false;
  return type;
}

}  // namespace sqlite
