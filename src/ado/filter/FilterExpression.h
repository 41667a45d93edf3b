#pragma once

#include <string_view>
#include <vector>

#include "ado/filter/FilterTerm.h"
#include "ado/recordset/Fields.h"

namespace ado {

/// A filter's condition: a term, or terms joined by AND or OR.
class FilterExpression {
 public:
  enum class Join { None, And, Or };

  explicit FilterExpression(FilterTerm term) { terms_.push_back(std::move(term)); }
  /// Takes over the parts; parts joined in the same way become one list.
  FilterExpression(Join join, std::vector<FilterExpression> parts);

  bool matches(const values::Variant* cells) const;

  /// The equalities that every matching row fulfils: their fields, ascending, and the key of their values.
  struct Equalities {
    std::vector<std::size_t> fields;
    Key key = 0;
  };
  Equalities equalities() const;

 private:
  Join join_ = Join::None;
  std::vector<FilterTerm> terms_;
  std::vector<FilterExpression> parts_;
};

/// Reads the text of a filter. Throws Errore that says where and why it does not parse.
FilterExpression parseFilter(std::string_view text, const Fields& fields);

}  // namespace ado
