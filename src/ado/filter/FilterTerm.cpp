#include "ado/filter/FilterTerm.h"

#include <utility>

#include "ado/FieldType.h"
#include "values/Conversion.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace ado {
namespace {

using values::Date;
using values::Decimal;
using values::Errore;
using values::Kind;
using values::Variant;

/// How a cell stands to a value; nothing when the two have no order.
using Order = std::optional<int>;

template <class T>
int order(const T& a, const T& b) {
  return a < b ? -1 : b < a ? 1 : 0;
}

Order orderWhole(std::int64_t cell, const FilterValue& value) {
  if (value.whole) return order(cell, *value.whole);
  if (value.number) return order(Decimal::FromScaled(cell), *value.number);
  return {};
}

Order orderDecimal(const Decimal& cell, const FilterValue& value) {
  return value.number ? Order(order(cell, *value.number)) : Order();
}

Order orderDouble(double cell, const FilterValue& value) {
  if (!value.number || cell != cell) return {};
  try {
    return order(Decimal::FromDouble(cell), *value.number);
  } catch (const Errore&) {
    return cell < 0 ? -1 : 1;  // beyond every number that a filter can hold
  }
}

Order orderText(const std::string& cell, const FilterValue& value) {
  switch (value.value.kind()) {
    case Kind::String: return values::compareText(cell, value.value.as<std::string>());
    case Kind::Decimal:
      if (const auto number = numberIn(cell)) return order(*number, *value.number);
      return {};
    case Kind::Date:
      if (const auto date = Date::TryParse(cell)) return order(*date, *value.date);
      return {};
    default: return {};
  }
}

Order orderBoolean(bool cell, const FilterValue& value) {
  if (const bool* flag = value.value.get_if<bool>()) return order(cell, *flag);
  return orderWhole(cell ? 1 : 0, value);
}

Order orderCell(const Variant& cell, const FilterValue& value) {
  switch (cell.kind()) {
    case Kind::Int16: return orderWhole(cell.as<std::int16_t>(), value);
    case Kind::Int32: return orderWhole(cell.as<std::int32_t>(), value);
    case Kind::Decimal: return orderDecimal(cell.as<Decimal>(), value);
    case Kind::Double: return orderDouble(cell.as<double>(), value);
    case Kind::String: return orderText(cell.as<std::string>(), value);
    case Kind::Boolean: return orderBoolean(cell.as<bool>(), value);
    case Kind::Date: return value.date ? Order(order(cell.as<Date>(), *value.date)) : Order();
    default: return {};
  }
}

bool holds(FilterOperator op, Order cell) {
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

[[noreturn]] void cannotCompare(const Field& field, std::string_view with) {
  throw Errore("Field " + field.Name() + " cannot be compared with " + std::string(with));
}

Variant booleanFor(const Field& field, const FilterValue& written) {
  if (written.value.kind() == Kind::Boolean) return written.value;
  if (written.number) return !written.number->isZero();
  if (const auto* text = written.value.get_if<std::string>())
    for (const bool flag : {true, false})
      if (values::compareText(*text, flag ? "true" : "false") == 0) return flag;
  cannotCompare(field, "a value that is neither true nor false");
}

/// The value in the kind of the field, so that every cell compares with it without conversion. A value that has no
/// such form is refused here: a filter that could never match is a mistake in the caller's text.
FilterValue adapted(const Field& field, const FieldType& type, FilterValue written) {
  const Kind kind = written.value.kind();
  if (kind == Kind::Null || type.family == FieldFamily::Any) return written;
  if (type.family == FieldFamily::Boolean) return FilterValue(booleanFor(field, written));
  if (kind == Kind::Boolean) cannotCompare(field, "a Boolean");
  if (type.isNumber()) {
    if (!written.number || kind == Kind::Date) cannotCompare(field, "a value that is no number");
    return FilterValue(*written.number);
  }
  if (type.family == FieldFamily::Date) {
    if (!written.date) cannotCompare(field, "a value that is no date");
    return FilterValue(*written.date);
  }
  if (kind == Kind::Date) cannotCompare(field, "a date");
  return written;  // a number stays one: it finds the texts that hold it
}

/// Case folded, blanks at the end kept: in a pattern they may stand before a wildcard.
std::string folded(std::string_view text) {
  std::string closed(text);
  closed += '|';
  closed = values::foldText(closed);
  closed.pop_back();
  return closed;
}

constexpr std::string_view kWildcards = "*%";

bool isWildcard(char c) { return kWildcards.find(c) != std::string_view::npos; }

}  // namespace

FilterValue::FilterValue(Variant written) : value(std::move(written)) {
  if (const auto* text = value.get_if<std::string>()) {
    number = numberIn(*text);
    date = Date::TryParse(*text);
  }
  if (const auto* decimal = value.get_if<Decimal>()) number = *decimal;
  if (const auto* day = value.get_if<Date>()) date = *day;
  if (number) whole = number->toScaled(0);
}

LikePattern::LikePattern(std::string_view pattern) {
  pattern = values::rtrim(pattern);
  if (!pattern.empty() && isWildcard(pattern.back())) {
    openEnd = true;
    pattern.remove_suffix(1);
  }
  if (!pattern.empty() && isWildcard(pattern.front())) {
    openStart = true;
    pattern.remove_prefix(1);
  }
  if (pattern.find_first_of(kWildcards) != std::string_view::npos)
    throw Errore("LIKE takes * and % only at the ends of the text");
  core = folded(pattern);
}

bool LikePattern::matches(std::string_view text) const {
  // Fixed columns are padded: the padding may fill an open end, but never stands between the text and a closed one.
  const std::string cell = folded(openEnd ? text : values::rtrim(text));
  if (openStart && openEnd) return cell.find(core) != std::string::npos;
  if (openStart) return cell.ends_with(core);
  return openEnd ? cell.starts_with(core) : cell == core;
}

FilterTerm::FilterTerm(const Field& field, FilterOperator op, Variant value)
    : field_(field.position_), op_(op), value_(adapted(field, *field.type_, FilterValue(std::move(value)))) {
  if (op == FilterOperator::Like) {
    const auto* pattern = value_.value.get_if<std::string>();
    if (pattern == nullptr) throw Errore("LIKE takes a text and a field that holds text: " + field.Name());
    like_.emplace(*pattern);
  } else if (value_.value.isNull() && op != FilterOperator::Equal && op != FilterOperator::NotEqual) {
    throw Errore("Only = and <> can be used with NULL: " + field.Name());
  }
}

bool FilterTerm::matches(const Variant* cells) const {
  const Variant& cell = cells[field_];
  if (value_.value.isNull()) return cell.isNothing() == (op_ == FilterOperator::Equal);
  if (cell.isNothing()) return false;
  if (like_) return cell.kind() != Kind::Object && like_->matches(values::toPlainText(cell));
  return holds(op_, orderCell(cell, value_));
}

}  // namespace ado
