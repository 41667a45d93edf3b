#include "ado/FieldType.h"

#include <array>
#include <string>

#include "values/Conversion.h"
#include "values/Errore.h"

namespace ado {
namespace {

using values::Variant;

Variant unchanged(const Variant& value) { return value; }

Variant int16(const Variant& value) { return values::toInt16(value); }
Variant int32(const Variant& value) { return values::toInt32(value); }
/// A 32-bit integer where it fits, otherwise a Decimal.
Variant int64(const Variant& value) { return values::toInt64(value); }
Variant real(const Variant& value) { return values::toDouble(value); }
Variant date(const Variant& value) { return values::toDate(value); }
Variant boolean(const Variant& value) { return values::toBool(value); }

constexpr std::array kTypes{
    FieldType{adSmallInt, FieldFamily::Number, "smallint", int16},
    FieldType{adInteger, FieldFamily::Number, "integer", int32},
    FieldType{adBigInt, FieldFamily::Number, "bigint", int64},
    FieldType{adDouble, FieldFamily::Number, "double", real},
    FieldType{adDecimal, FieldFamily::Decimal, "decimal", unchanged},
    FieldType{adNumeric, FieldFamily::Decimal, "decimal", unchanged},
    FieldType{adDate, FieldFamily::Date, "date", date},
    FieldType{adDBTimeStamp, FieldFamily::Date, "date", date},
    FieldType{adBoolean, FieldFamily::Boolean, "boolean", boolean},
    FieldType{adVarWChar, FieldFamily::Text, "text", unchanged},
    FieldType{adVarChar, FieldFamily::Text, "text", unchanged},
    FieldType{adWChar, FieldFamily::FixedText, "text", unchanged},
    FieldType{adChar, FieldFamily::FixedText, "text", unchanged},
    FieldType{adVariant, FieldFamily::Any, "variant", unchanged},
};

}  // namespace

const FieldType& fieldType(DataTypeEnum code) {
  for (const auto& type : kTypes)
    if (type.code == code) return type;
  throw values::Errore("Type " + std::to_string(static_cast<int>(code)) + " is invalid for a field");
}

}  // namespace ado
