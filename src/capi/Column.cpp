#include "capi/Column.h"

#include <algorithm>

#include "values/Conversion.h"

namespace capi {
namespace {

using values::Kind;
using values::Variant;

bukorval_kind kindOf(const Variant& value) {
  switch (value.kind()) {
    case Kind::Int16:
    case Kind::Int32: return BUKORVAL_INTEGER;
    case Kind::Double: return BUKORVAL_DOUBLE;
    case Kind::Decimal: return BUKORVAL_DECIMAL;
    case Kind::Date: return BUKORVAL_DATE;
    case Kind::Boolean: return BUKORVAL_BOOLEAN;
    default: return BUKORVAL_TEXT;
  }
}

bukorval_kind kindOf(const ado::Field& field, const std::vector<Variant>& values) {
  switch (field.Type()) {
    case ado::adSmallInt:
    case ado::adInteger:
    case ado::adBigInt: return BUKORVAL_INTEGER;
    case ado::adDouble: return BUKORVAL_DOUBLE;
    case ado::adDecimal:
    case ado::adNumeric: return field.NumericScale() == 0 ? BUKORVAL_INTEGER : BUKORVAL_DECIMAL;
    case ado::adDate:
    case ado::adDBTimeStamp: return BUKORVAL_DATE;
    case ado::adBoolean: return BUKORVAL_BOOLEAN;
    case ado::adVariant: break;
    default: return BUKORVAL_TEXT;
  }
  const auto first = std::ranges::find_if_not(values, &Variant::isNothing);
  return first == values.end() ? BUKORVAL_TEXT : kindOf(*first);
}

/// Adds a value as one of the kind, 0 for none; false when it does not fit.
bool add(ColumnData& data, const Variant& value, bukorval_kind kind, int scale) {
  const bool none = value.isNothing();
  if (kind == BUKORVAL_TEXT) {
    data.text += values::toPlainText(value);
    data.text += '\0';
    data.offsets.push_back(data.text.size());
    return true;
  }
  const auto found = none ? kind : kindOf(value);
  const bool whole = found == BUKORVAL_INTEGER || found == BUKORVAL_DECIMAL;
  if (found != kind && !(whole && (kind == BUKORVAL_INTEGER || kind == BUKORVAL_DECIMAL))) return false;
  if (kind == BUKORVAL_DOUBLE) {
    data.doubles.push_back(none ? 0 : value.as<double>());
  } else if (kind == BUKORVAL_DATE) {
    data.dates.push_back(none ? bukorval_date{} : dateOf(value.as<values::Date>()));
  } else if (kind == BUKORVAL_BOOLEAN) {
    data.integers.push_back(none ? 0 : value.as<bool>());
  } else {
    const auto scaled = none ? std::int64_t{0} : values::toDecimal(value).toScaled(scale);
    if (!scaled) return false;
    data.integers.push_back(*scaled);
  }
  return true;
}

bool fill(ColumnData& data, const std::vector<Variant>& values, bukorval_kind kind, int scale) {
  data = {};
  if (kind == BUKORVAL_TEXT) data.offsets.push_back(0);
  // One more, so that there is an array where there are no rows.
  data.nulls.reserve(values.size() + 1);
  for (const auto& value : values) {
    data.nulls.push_back(value.isNothing());
    if (!add(data, value, kind, scale)) return false;
  }
  return true;
}

int scaleOf(const ado::Field& field, const std::vector<Variant>& values) {
  int scale = field.NumericScale();
  if (field.Type() != ado::adVariant) return scale;
  for (const auto& value : values)
    if (const auto* number = value.get_if<values::Decimal>()) scale = std::max(scale, number->scale());
  return scale;
}

}  // namespace

bukorval_date dateOf(const values::Date& date) {
  return {date.year(), date.month(), date.day(), date.hour(), date.minute(), date.second()};
}

bukorval_column makeColumn(ColumnData& data, const std::vector<Variant>& values, const ado::Field& field) {
  auto kind = kindOf(field, values);
  const int scale = kind == BUKORVAL_DECIMAL ? scaleOf(field, values) : 0;
  if (!fill(data, values, kind, scale)) fill(data, values, kind = BUKORVAL_TEXT, scale);
  const bool scaled = kind == BUKORVAL_INTEGER || kind == BUKORVAL_DECIMAL || kind == BUKORVAL_BOOLEAN;
  return {kind,
          values.size(),
          data.nulls.data(),
          scaled ? data.integers.data() : nullptr,
          scale,
          kind == BUKORVAL_DOUBLE ? data.doubles.data() : nullptr,
          kind == BUKORVAL_DATE ? data.dates.data() : nullptr,
          kind == BUKORVAL_TEXT ? data.text.c_str() : nullptr,
          kind == BUKORVAL_TEXT ? data.offsets.data() : nullptr};
}

}  // namespace capi
