#include "ado/filter/FilterExpression.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace ado {

FilterExpression::FilterExpression(Join join, std::vector<FilterExpression> parts) : join_(join) {
  for (auto& part : parts) {
    if (part.join_ == Join::None || part.join_ == join) {
      std::move(part.terms_.begin(), part.terms_.end(), std::back_inserter(terms_));
      std::move(part.parts_.begin(), part.parts_.end(), std::back_inserter(parts_));
    } else {
      parts_.push_back(std::move(part));
    }
  }
}

bool FilterExpression::matches(const values::Variant* cells) const {
  const auto holds = [cells](const auto& condition) { return condition.matches(cells); };
  if (join_ == Join::Or) return std::ranges::any_of(terms_, holds) || std::ranges::any_of(parts_, holds);
  return std::ranges::all_of(terms_, holds) && std::ranges::all_of(parts_, holds);
}

FilterExpression::Equalities FilterExpression::equalities() const {
  std::vector<const FilterTerm*> found;
  if (join_ != Join::Or) {
    for (const auto& term : terms_)
      if (term.isEquality()) found.push_back(&term);
  }
  std::ranges::stable_sort(found, {}, &FilterTerm::field);
  Equalities result;
  for (const auto* term : found) {
    // A second equality on a field is left to the test of the rows found.
    if (!result.fields.empty() && result.fields.back() == term->field()) continue;
    result.fields.push_back(term->field());
    result.key = combine(result.key, term->key());
  }
  return result;
}

}  // namespace ado
