#include "ado/recordset/Field.h"

#include <array>
#include <cassert>
#include <utility>

#include "ado/FieldType.h"
#include "ado/Messages.h"
#include "ado/recordset/Recordset.h"
#include "ado/recordset/RowCursor.h"
#include "values/Conversion.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace ado {
namespace {

using values::Decimal;
using values::Errore;
using values::Variant;

/// Fixed text longer than any fixed column is a stand-in for "no limit" and is not padded.
constexpr std::int32_t kLongestFixedText = 8000;

std::uint8_t digitCount(const std::string& field, std::string_view what, int digits) {
  if (digits < 0 || digits > Decimal::kMaxScale) {
    throw Errore("Field " + field + ": " + std::string(what) + " " + std::to_string(digits) + " is not between 0 and " +
                 std::to_string(Decimal::kMaxScale));
  }
  return static_cast<std::uint8_t>(digits);
}

constexpr int kDigitsOf64Bits = 18;
constexpr auto kPowersOfTen = [] {
  std::array<std::int64_t, kDigitsOf64Bits + 1> powers{1};
  for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
  return powers;
}();

/// False when it is not certain, too.
bool hasAtMost(std::uint8_t digits, std::int64_t units) {
  return digits <= kDigitsOf64Bits && units < kPowersOfTen[digits] && units > -kPowersOfTen[digits];
}

std::string shown(const Variant& value) {
  if (value.kind() == values::Kind::Object) return "of an object";
  if (value.kind() == values::Kind::String) return "'" + value.as<std::string>() + "'";
  return values::toPlainText(value);
}

}  // namespace

Field::Field(Recordset& owner, std::size_t position, std::string name, const FieldType& type, std::int32_t definedSize,
             std::int32_t attributes)
    : owner_(&owner),
      position_(position),
      name_(std::move(name)),
      type_(&type),
      definedSize_(type.isText() ? definedSize : 0),
      attributes_(attributes) {}

DataTypeEnum Field::Type() const { return type_->code; }

void Field::Precision(int digits) {
  if (owner_->State() == adStateOpen) throw Errore(kObjectOpen);
  precision_ = digitCount(name_, "precision", digits);
}

void Field::NumericScale(int digits) {
  if (owner_->State() == adStateOpen) throw Errore(kObjectOpen);
  scale_ = digitCount(name_, "scale", digits);
}

const Variant& Field::Value() const {
  const auto cells = owner_->cursor_->cells();
  if (cells.empty()) owner_->cursor_->refuseNoRow();
  assert(position_ < cells.size());
  return cells[position_];
}

void Field::Value(const Variant& value) {
  auto& cursor = *owner_->cursor_;
  if (cursor.cells().empty()) cursor.refuseNoRow();
  cursor.set(position_, accept(value));
}

Variant Field::accept(const Variant& value) const {
  if (value.isNothing()) {
    if (!isNullable()) throw Errore("Field " + name_ + ": Null is not allowed");
    return Variant::Null();
  }
  try {
    if (type_->family == FieldFamily::Decimal) return acceptDecimal(value);
    if (type_->isText()) return acceptText(value);
    return type_->convert(value);
  } catch (const values::Errore& error) {
    // The conversions do not know for whom they work.
    const std::string_view why = error.what();
    if (why.starts_with("Field ")) throw;
    refuse(value, why == "Overflow" ? "does not fit" : "is no");
  }
}

Variant Field::acceptDecimal(const Variant& value) const {
  const Decimal number = values::toDecimal(value);
  if (precision_ == 0) return scale_ == 0 ? number : number.rounded(scale_);
  // One scale a column: amounts show their cents whoever wrote them.
  if (const auto units = number.toScaled(scale_); units && hasAtMost(precision_, *units))
    return Decimal::FromScaled(*units, scale_);
  const Decimal rounded = number.rounded(scale_);
  if (rounded.integerDigits() > precision_ - scale_) refuse(value, "does not fit");
  return rounded.scale() < scale_ ? rounded + Decimal::FromScaled(0, scale_) : rounded;
}

Variant Field::acceptText(const Variant& value) const {
  std::string text = value.kind() == values::Kind::String ? value.as<std::string>() : values::toPlainText(value);
  if (definedSize_ <= 0) return text;
  const auto size = static_cast<std::size_t>(definedSize_);
  // Bytes bound characters from above, so most texts need no count.
  if (text.size() > size && values::length(text) > size) {
    // Blanks beyond the size are padding of the column the text comes from.
    if (values::length(values::rtrim(text)) > size) refuse(value, "is too long for");
    text = values::left(text, size);
  }
  const bool padded = type_->family == FieldFamily::FixedText && definedSize_ <= kLongestFixedText;
  return padded ? values::padRight(text, size) : text;
}

void Field::refuse(const Variant& value, std::string_view why) const {
  throw Errore("Field " + name_ + ": value " + shown(value) + " " + std::string(why) + " " + typeText());
}

std::string Field::typeText() const {
  std::string text(type_->name);
  if (type_->family == FieldFamily::Decimal)
    return text + "(" + std::to_string(precision_) + "," + std::to_string(scale_) + ")";
  if (type_->isText() && definedSize_ > 0) return text + "(" + std::to_string(definedSize_) + ")";
  return text;
}

}  // namespace ado
