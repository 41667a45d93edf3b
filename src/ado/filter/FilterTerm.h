#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "ado/filter/FilterColumn.h"
#include "ado/filter/FilterPattern.h"
#include "ado/filter/FilterValue.h"

namespace ado {

enum class FilterOperator { Equal, NotEqual, Less, Greater, LessOrEqual, GreaterOrEqual, Like };

/// FIELD op VALUE, ready to be tested on rows.
class FilterTerm {
 public:
  /// @param value  as FilterValue holds it.
  /// Throws Errore when the column's type cannot be compared so with the value.
  FilterTerm(const FilterColumn& column, FilterOperator op, values::Variant value);

  bool matches(std::span<const values::Variant> cells) const;
  /// The key of the cells that an equality holds equal.
  std::string key() const { return filterKey(value_.value); }

 private:
  std::size_t position_;
  FilterOperator op_;
  FilterValue value_;
  std::optional<FilterPattern> like_;
};

}  // namespace ado
