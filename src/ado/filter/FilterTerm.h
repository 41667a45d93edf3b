#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "ado/recordset/Field.h"
#include "ado/recordset/RowKey.h"

namespace ado {

enum class FilterOperator { Equal, NotEqual, Less, Greater, LessOrEqual, GreaterOrEqual, Like };

/// A value written in a filter, with every reading of it that a field may ask for.
struct FilterValue {
  values::Variant value;  ///< Null, a Decimal, text, a Date or a Boolean
  std::optional<values::Decimal> number;
  std::optional<std::int64_t> whole;
  std::optional<values::Date> date;

  explicit FilterValue(values::Variant written);
};

/// The text a LIKE looks for, with the ends that are open.
struct LikePattern {
  std::string core;
  bool openStart = false;
  bool openEnd = false;

  /// Throws Errore for a wildcard that stands inside.
  explicit LikePattern(std::string_view pattern);
  bool matches(std::string_view text) const;
};

/// FIELD op VALUE, ready to be tested on rows.
class FilterTerm {
 public:
  /// Throws Errore when the field's type cannot be compared so with the value.
  FilterTerm(const Field& field, FilterOperator op, values::Variant value);

  bool matches(const values::Variant* cells) const;
  std::size_t field() const { return field_; }
  /// Whether an index can find the rows: by key(), in the field's column.
  bool isEquality() const { return op_ == FilterOperator::Equal; }
  Key key() const { return keyOf(value_.value); }

 private:
  std::size_t field_;
  FilterOperator op_;
  FilterValue value_;
  std::optional<LikePattern> like_;
};

}  // namespace ado
