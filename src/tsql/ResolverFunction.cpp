#include <algorithm>

#include "tsql/Names.h"
#include "tsql/Resolver.h"
#include "tsql/TypeRules.h"

namespace tsql {
namespace {

struct DatePartName {
  std::string_view name;
  DatePart part;
};
constexpr DatePartName kDateParts[] = {{"DAY", DatePart::Day},     {"DD", DatePart::Day},   {"D", DatePart::Day},
                                       {"MONTH", DatePart::Month}, {"MM", DatePart::Month}, {"M", DatePart::Month},
                                       {"YEAR", DatePart::Year},   {"YY", DatePart::Year},  {"YYYY", DatePart::Year}};

}  // namespace

Type Resolver::resolve(Call& node, Expression& e, const Scope& scope) {
  if (isAggregate(node.function)) return aggregate(node, e, scope);
  if (node.distinct || node.star) fail("Incorrect syntax in " + node.name, e.offset);
  const FunctionRule& rule = functionRule(node.name);
  if (node.arguments.size() < rule.least || node.arguments.size() > rule.most)
    fail(node.name + " has another number of arguments", e.offset);
  const bool parted = node.function == Function::DateAdd || node.function == Function::DateDiff;
  if (parted) node.part = datePart(node);
  for (std::size_t i = parted ? 1 : 0; i < node.arguments.size(); ++i) expression(*node.arguments[i], scope);
  return scalar(node);
}

/// The word that the first argument is: it looks like a column's name.
DatePart Resolver::datePart(const Call& call) const {
  const Expression& word = *call.arguments.front();
  const auto* name = word.as<ColumnName>();
  if (name && name->qualifier.empty())
    for (const auto& known : kDateParts)
      if (sameName(known.name, name->name)) return known.part;
  fail("Only day, month and year are known to " + call.name, word.offset);
}

Type Resolver::aggregate(const Call& call, const Expression& e, const Scope& scope) {
  const bool count = call.function == Function::Count;
  if (call.star && !count) fail("Incorrect syntax: only COUNT takes '*'", e.offset);
  if (call.star) return integerType();
  if (call.arguments.size() != 1) fail(call.name + " takes one argument", e.offset);
  const Type type = expression(*call.arguments.front(), scope);
  if (count) return integerType();
  if (call.function == Function::Min || call.function == Function::Max) return type;
  if (type.kind == TypeKind::Text || type.kind == TypeKind::DateTime)
    fail("Operand data type " + typeName(type) + " is invalid for " + call.name, e.offset);
  if (type.kind == TypeKind::Float) return type;
  const bool decimal = type.kind == TypeKind::Decimal;
  if (call.function == Function::Avg)
    return decimal ? decimalType(38, std::max(6, static_cast<int>(type.scale))) : integerType(64);
  return type.kind == TypeKind::Unknown ? type : decimalType(38, scaleOf(type));
}

/// The type of a function of values, whose arguments are resolved.
Type Resolver::scalar(const Call& call) {
  const auto& arguments = call.arguments;
  const auto typeOf = [&](std::size_t argument) -> const Type& { return arguments[argument]->type; };
  switch (call.function) {
    case Function::NewId: return textType(36);
    case Function::GetDate:
    case Function::DateAdd: return dateTimeType();
    case Function::DateDiff:
    case Function::Year:
    case Function::Month:
    case Function::Day:
    case Function::Len:
    case Function::Sign: return integerType();
    case Function::IsNull: {
      Type type = typeOf(0).kind == TypeKind::Unknown ? typeOf(1) : typeOf(0);
      type.nullable = typeOf(1).nullable;
      return type;
    }
    case Function::Coalesce: {
      Type type;
      for (const auto& argument : arguments) type = unify(type, argument->type);
      return type;
    }
    case Function::NullIf: {
      Type type = typeOf(0);
      type.nullable = true;
      return type;
    }
    case Function::Round:
    case Function::Abs: return typeOf(0);
    case Function::Floor:
    case Function::Ceiling: return decimalType(precisionOf(typeOf(0)), 0);
    case Function::Replace:
    case Function::Replicate: return textType(0);
    case Function::Left: return textType(arguments[1]->as<Constant>() ? 0 : typeOf(0).length);
    case Function::LTrim:
    case Function::RTrim:
    case Function::Upper:
    case Function::Lower:
    case Function::Substring:
    case Function::Right: return textType(typeOf(0).length);
    case Function::Unknown:
    case Function::Sum:
    case Function::Count:
    case Function::Min:
    case Function::Max:
    case Function::Avg: break;
  }
  return {};
}

}  // namespace tsql
