#pragma once

#include <cstdint>
#include <string_view>

#include "ado/Types.h"
#include "values/Variant.h"

namespace ado {

/// What sets the types of fields apart.
enum class FieldFamily { Number, Decimal, Text, FixedText, Date, Boolean, Any };

struct FieldType {
  DataTypeEnum code;
  FieldFamily family;
  std::string_view name;  ///< as error texts name it
  /// Brings a value to the stored form; not for decimals and text, which depend on the field's size.
  values::Variant (*convert)(const values::Variant& value);

  bool isNumber() const { return family == FieldFamily::Number || family == FieldFamily::Decimal; }
  bool isText() const { return family == FieldFamily::Text || family == FieldFamily::FixedText; }
};

/// Throws Errore for a type that record sets do not have.
const FieldType& fieldType(DataTypeEnum code);

}  // namespace ado
