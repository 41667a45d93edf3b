#include "ado/FieldType.h"

#include <array>
#include <string>

#include "values/Conversion.h"
#include "values/Errore.h"

namespace ado {
namespace {

using values::Variant;

Variant unchanged(const Variant& value) { return value; }

constexpr std::array kTypes{
    FieldType{adSmallInt, FieldFamily::Number, "smallint", [](const Variant& v) { return Variant(values::toInt16(v)); }},
    FieldType{adInteger, FieldFamily::Number, "integer", [](const Variant& v) { return Variant(values::toInt32(v)); }},
    FieldType{adBigInt, FieldFamily::Number, "bigint", [](const Variant& v) { return Variant(values::toInt64(v)); }},
    FieldType{adDouble, FieldFamily::Number, "double", [](const Variant& v) { return Variant(values::toDouble(v)); }},
    FieldType{adDecimal, FieldFamily::Decimal, "decimal", unchanged},
    FieldType{adNumeric, FieldFamily::Decimal, "decimal", unchanged},
    FieldType{adDate, FieldFamily::Date, "date", [](const Variant& v) { return Variant(values::toDate(v)); }},
    FieldType{adDBTimeStamp, FieldFamily::Date, "date", [](const Variant& v) { return Variant(values::toDate(v)); }},
    FieldType{adBoolean, FieldFamily::Boolean, "boolean", [](const Variant& v) { return Variant(values::toBool(v)); }},
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
