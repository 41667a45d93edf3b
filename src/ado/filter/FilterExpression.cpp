#include "ado/filter/FilterExpression.h"

#include <algorithm>
#include <cassert>
#include <iterator>

namespace ado {

FilterExpression::FilterExpression(Join join, std::vector<FilterExpression> parts) : join_(join) {
  assert(join != Join::None && !parts.empty());
  for (auto& part : parts) {
    if (part.join_ == Join::None || part.join_ == join) {
      std::move(part.terms_.begin(), part.terms_.end(), std::back_inserter(terms_));
      std::move(part.parts_.begin(), part.parts_.end(), std::back_inserter(parts_));
    } else {
      parts_.push_back(std::move(part));
    }
  }
}

bool FilterExpression::matches(std::span<const values::Variant> cells) const {
  const auto holds = [cells](const auto& condition) { return condition.matches(cells); };
  if (join_ == Join::Or) return std::ranges::any_of(terms_, holds) || std::ranges::any_of(parts_, holds);
  return std::ranges::all_of(terms_, holds) && std::ranges::all_of(parts_, holds);
}

}  // namespace ado
