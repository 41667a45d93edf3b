#include "engine/BulkRow.h"

#include "engine/DateNumber.h"
#include "engine/Scaled.h"
#include "values/Conversion.h"
#include "values/Errore.h"

namespace engine {
namespace {

using tsql::Literal;
using tsql::Type;
using tsql::TypeKind;
using values::Kind;
using values::Variant;

std::optional<BoundValue> number(const Type& type, const values::Decimal& value) {
  const auto units = value.toScaled(type.scale);
  if (!units || digitCount(*units) > type.precision) return std::nullopt;
  return *units;
}

/// The values that columns of their kind take as they are; nothing for any other, and for what may not fit.
std::optional<BoundValue> asItIs(const Type& type, const Variant& value) {
  switch (type.kind) {
    case TypeKind::Decimal:
      if (value.kind() == Kind::Int32) return number(type, values::Decimal::FromScaled(value.as<std::int32_t>()));
      if (value.kind() == Kind::Decimal) return number(type, value.as<values::Decimal>());
      break;
    case TypeKind::Integer:
      if (value.kind() == Kind::Int16 || (value.kind() == Kind::Int32 && type.precision >= 32))
        return std::int64_t{values::toInt32(value)};
      break;
    case TypeKind::DateTime:
      if (value.kind() == Kind::Date) return toDateNumber(value.as<values::Date>());
      break;
    case TypeKind::Text:
      // A text has no more characters than bytes.
      if (const auto* text = value.get_if<std::string>();
          text != nullptr && !type.fixed && text->size() <= static_cast<std::size_t>(type.length))
        return std::string_view(*text);
      break;
    default: break;
  }
  return std::nullopt;
}

void setLiteral(Literal& literal, const Variant& value) {
  literal.kind = Literal::Kind::Text;
  if (value.kind() == Kind::Boolean) {
    literal.text = value.as<bool>() ? "1" : "0";
  } else if (value.kind() == Kind::Date) {
    literal.text = value.as<values::Date>().toSql();
    return;
  } else {
    literal.text = values::toPlainText(value);
  }
  if (value.kind() == Kind::String) return;
  literal.kind = literal.text.find_first_of("eE") != std::string::npos ? Literal::Kind::Float
                 : literal.text.find('.') != std::string::npos         ? Literal::Kind::Decimal
                                                                       : Literal::Kind::Integer;
}

}  // namespace

BulkRow::BulkRow(const tsql::Catalog& catalog, std::string_view table, const std::vector<std::string_view>& columns) {
  const auto* found = catalog.find(table);
  if (!found) throw values::Errore("Invalid object name '" + std::string(table) + "'.");
  table_ = found->name;
  for (const auto name : columns) {
    const auto* column = found->find(name);
    if (!column) throw values::Errore("Invalid column name '" + std::string(name) + "'.");
    columns_.push_back({Binding::How::ToType, columns_.size(), column->type, true, column->name});
  }
  literals_.resize(columns_.size());
}

std::optional<BoundValue> BulkRow::convert(std::size_t column, const Variant& value) {
  if (value.isNothing()) return std::nullopt;
  const auto& binding = columns_[column];
  if (auto own = asItIs(binding.target, value)) return own;
  setLiteral(literals_[column], value);
  return convertedValue(literals_[column], binding);
}

}  // namespace engine
