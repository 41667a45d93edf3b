#include "engine/ResultSet.h"

#include <algorithm>
#include <string>

#include "engine/Scaled.h"
#include "values/Errore.h"

namespace engine {

using namespace ado;

namespace {

using tsql::Type;
using tsql::TypeKind;
using values::Decimal;

/// A Decimal holds any number of 28 digits.
constexpr std::size_t kDecimalDigits = 28;
constexpr std::int32_t kUnlimitedText = 1'073'741'823;

DataTypeEnum integerType(const Type& type) {
  if (type.precision == 16) return adSmallInt;
  return type.precision == 32 ? adInteger : adBigInt;
}

DataTypeEnum textType(const Type& type) {
  if (type.fixed) return type.wide ? adWChar : adChar;
  return type.wide ? adVarWChar : adVarChar;
}

DataTypeEnum fieldType(const Type& type) {
  switch (type.kind) {
    case TypeKind::Integer: return integerType(type);
    case TypeKind::Decimal: return adDecimal;
    case TypeKind::Float: return adDouble;
    case TypeKind::Text: return textType(type);
    case TypeKind::DateTime: return adDBTimeStamp;
    case TypeKind::Bit: return adBoolean;
    case TypeKind::Unknown: break;
  }
  return adVariant;
}

}  // namespace

RecordsetPtr emptySet(const std::vector<tsql::ResultColumn>& columns) {
  auto set = std::make_shared<Recordset>();
  set->CursorLocation = adUseClient;
  auto& fields = set->Fields();
  for (const auto& [name, type] : columns) {
    // Two columns of a query may carry one name; a record set finds the first by it, so the others get a number.
    std::string unique = name;
    for (int copy = 2; fields.Find(unique) != nullptr; ++copy) unique = name + "#" + std::to_string(copy);
    const bool text = type.kind == TypeKind::Text;
    const std::int32_t size = text ? (type.length > 0 ? type.length : kUnlimitedText) : 0;
    auto& field = fields.Append(unique, fieldType(type), size, type.nullable ? adFldIsNullable : adFldUnspecified);
    if (type.kind == TypeKind::Decimal) {
      field.Precision(std::min<int>(type.precision, kDecimalDigits));
      field.NumericScale(type.scale);
    }
  }
  set->Open();
  return set;
}

Decimal wideDecimal(std::string_view digits, int scale) {
  const auto units = parseUnits(digits);
  const auto value =
      units && digits.size() <= kDecimalDigits + 1 ? Decimal::TryParse(unitsToPlainText(*units, scale)) : std::nullopt;
  if (!value) throw values::Errore("Arithmetic overflow error converting expression to data type numeric");
  return *value;
}

RecordsetPtr identityRow(const std::string& name, std::optional<std::int64_t> identity) {
  auto set = std::make_shared<Recordset>();
  set->CursorLocation = adUseClient;
  auto& field = set->Fields().Append(name, adDecimal, 0, adFldIsNullable);
  field.Precision(28);
  field.NumericScale(0);
  set->Open();
  auto cells = set->AppendRow();
  if (identity) cells[0] = Decimal::FromScaled(*identity);
  set->MoveFirst();
  return set;
}

}  // namespace engine
