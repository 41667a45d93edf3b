#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "ado/Types.h"
#include "values/Export.h"
#include "values/Variant.h"

namespace ado {

class Recordset;
struct FieldType;

/// One field of a record set: its type, and its value in the current row.
/// A Field stays valid for the life of its Recordset and follows the cursor, so look it up once before a loop.
class BUKORVAL_API Field {
 public:
  const std::string& Name() const { return name_; }
  DataTypeEnum Type() const;
  /// Characters for text, 0 otherwise.
  std::int32_t DefinedSize() const { return definedSize_; }
  std::int32_t Attributes() const { return attributes_; }
  std::uint8_t Precision() const { return precision_; }
  std::uint8_t NumericScale() const { return scale_; }
  /// Set before the record set is opened.
  void Precision(int digits);
  void NumericScale(int digits);

  /// The value in the current row; the reference holds until the row is updated or the cursor moves.
  /// Throws when the cursor stands on no row.
  const values::Variant& Value() const;
  /// Converts to the field's type first: a decimal is rounded half away from zero to the scale and refused when it
  /// has too many digits; text longer than the field is refused; Null is refused where the field is not nullable.
  void Value(const values::Variant& value);

 private:
  friend class Fields;
  friend class Recordset;
  Field(Recordset& owner, std::size_t position, std::string name, const FieldType& type, std::int32_t definedSize,
        std::int32_t attributes);
  /// The value as this field stores it; throws Errore naming the field.
  values::Variant accept(const values::Variant& value) const;
  values::Variant acceptDecimal(const values::Variant& value) const;
  values::Variant acceptText(const values::Variant& value) const;
  [[noreturn]] void refuse(const values::Variant& value, std::string_view why) const;
  /// "decimal(15,2)", "text(10)": the type as error texts name it.
  std::string typeText() const;
  /// Unspecified attributes (-1) allow nothing.
  bool isNullable() const { return attributes_ != adFldUnspecified && (attributes_ & adFldIsNullable) != 0; }

  Recordset* owner_;
  std::size_t position_;
  std::string name_;
  const FieldType* type_;
  std::int32_t definedSize_;
  std::int32_t attributes_;
  std::uint8_t precision_ = 0;
  std::uint8_t scale_ = 0;
};

}  // namespace ado
