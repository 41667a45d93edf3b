#pragma once

#include <span>
#include <utility>
#include <vector>

#include "ado/filter/FilterTerm.h"

namespace ado {

/// A filter's condition: a term, or terms joined by AND or OR.
class FilterExpression {
 public:
  enum class Join { None, And, Or };

  explicit FilterExpression(FilterTerm term) { terms_.push_back(std::move(term)); }
  /// Takes over the parts; parts joined in the same way become one list.
  FilterExpression(Join join, std::vector<FilterExpression> parts);

  bool matches(std::span<const values::Variant> cells) const;

 private:
  Join join_ = Join::None;
  std::vector<FilterTerm> terms_;
  std::vector<FilterExpression> parts_;
};

}  // namespace ado
