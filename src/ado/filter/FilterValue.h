#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "values/Variant.h"

namespace ado {

/// A value written in a filter, with every reading of it that a field may ask for.
struct FilterValue {
  values::Variant value;  ///< Null, a Decimal, text, a Date or a Boolean
  std::optional<values::Decimal> number;
  std::optional<std::int64_t> whole;
  std::optional<values::Date> date;

  explicit FilterValue(values::Variant written);
};

/// How a cell stands to a value: less than, equal to (0) or greater than it; nothing when the two have no order.
using FilterOrder = std::optional<int>;
FilterOrder orderOf(const values::Variant& cell, const FilterValue& value);

/// A text such that a cell and a value that are equal in the sense of orderOf, or both Null, have one key: numbers by
/// value, text that is a number with that number, dates by their day, other text without regard to case. What differs
/// may share a key, so whatever is found by key must still be compared.
std::string filterKey(const values::Variant& value);

/// The number that a text holds, as filters read it (point only, blanks around ignored); nothing when there is none.
std::optional<values::Decimal> numberIn(std::string_view text);

}  // namespace ado
