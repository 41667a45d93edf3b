#include "ado/filter/FilterTerm.h"

#include <cassert>
#include <utility>

#include "values/Conversion.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace ado {
namespace {

using values::Errore;
using values::Kind;
using values::Variant;

bool holds(FilterOperator op, FilterOrder cell) {
  // What has no order with the value is certainly not equal to it.
  if (!cell) return op == FilterOperator::NotEqual;
  switch (op) {
    case FilterOperator::Equal: return *cell == 0;
    case FilterOperator::NotEqual: return *cell != 0;
    case FilterOperator::Less: return *cell < 0;
    case FilterOperator::Greater: return *cell > 0;
    case FilterOperator::LessOrEqual: return *cell <= 0;
    case FilterOperator::GreaterOrEqual: return *cell >= 0;
    case FilterOperator::Like: break;
  }
  return false;
}

[[noreturn]] void cannotCompare(const FilterColumn& column, std::string_view with) {
  throw Errore("Field " + std::string(column.name) + " cannot be compared with " + std::string(with));
}

Variant booleanFor(const FilterColumn& column, const FilterValue& written) {
  if (written.value.kind() == Kind::Boolean) return written.value;
  if (written.number) return !written.number->isZero();
  if (const auto* text = written.value.get_if<std::string>())
    for (const bool flag : {true, false})
      if (values::compareText(*text, flag ? "true" : "false") == 0) return flag;
  cannotCompare(column, "a value that is neither true nor false");
}

/// The value in the kind of the column, so that every cell compares with it without conversion. A value that has no
/// such form is refused here: a filter that could never match is a mistake in the caller's text.
FilterValue adapted(const FilterColumn& column, FilterValue written) {
  const Kind kind = written.value.kind();
  const FieldType& type = *column.type;
  if (kind == Kind::Null || type.family == FieldFamily::Any) return written;
  if (type.family == FieldFamily::Boolean) return FilterValue(booleanFor(column, written));
  if (kind == Kind::Boolean) cannotCompare(column, "a Boolean");
  if (type.isNumber()) {
    if (!written.number || kind == Kind::Date) cannotCompare(column, "a value that is no number");
    return FilterValue(*written.number);
  }
  if (type.family == FieldFamily::Date) {
    if (!written.date) cannotCompare(column, "a value that is no date");
    return FilterValue(*written.date);
  }
  if (kind == Kind::Date) cannotCompare(column, "a date");
  return written;  // a number stays one: it finds the texts that hold it
}

}  // namespace

FilterTerm::FilterTerm(const FilterColumn& column, FilterOperator op, Variant value)
    : position_(column.position), op_(op), value_(adapted(column, FilterValue(std::move(value)))) {
  if (op == FilterOperator::Like) {
    const auto* pattern = value_.value.get_if<std::string>();
    if (pattern == nullptr) throw Errore("LIKE takes a text and a field that holds text: " + std::string(column.name));
    like_.emplace(*pattern);
  } else if (value_.value.isNull() && op != FilterOperator::Equal && op != FilterOperator::NotEqual) {
    throw Errore("Only = and <> can be used with NULL: " + std::string(column.name));
  }
}

bool FilterTerm::matches(std::span<const Variant> cells) const {
  assert(position_ < cells.size());
  const Variant& cell = cells[position_];
  if (value_.value.isNull()) return cell.isNothing() == (op_ == FilterOperator::Equal);
  if (cell.isNothing()) return false;
  if (like_) return cell.kind() != Kind::Object && like_->matches(values::toPlainText(cell));
  return holds(op_, orderOf(cell, value_));
}

}  // namespace ado
