#include "tsql/Names.h"
#include "tsql/Resolver.h"
#include "tsql/TypeRules.h"
#include "values/Errore.h"

namespace tsql {

Type Resolver::expression(Expression& e, const Scope& scope) {
  e.type = std::visit([&](auto& node) { return resolve(node, e, scope); }, e.node);
  return e.type;
}

void Resolver::optional(const ExpressionPtr& e, const Scope& scope) {
  if (e) expression(*e, scope);
}

/// What is true or false whatever the types of its parts.
template <class... Parts>
Type Resolver::condition(const Scope& scope, const Parts&... parts) {
  (expression(*parts, scope), ...);
  return bitType();
}

Type Resolver::resolve(Constant& node, Expression&, const Scope&) { return literalType(scan_.literals[node.literal]); }

Type Resolver::resolve(Null&, Expression& e, const Scope&) {
  e.null = true;
  return {};
}

Type Resolver::resolve(ColumnName& node, Expression& e, const Scope& scope) {
  const ResultColumn* found = nullptr;
  for (const auto& relation : scope.relations) {
    if (!node.qualifier.empty() && !sameName(relation.alias, node.qualifier)) continue;
    for (const auto& candidate : relation.columns) {
      if (!sameName(candidate.name, node.name)) continue;
      if (found) fail("Ambiguous column name '" + node.name + "'", e.offset);
      node.relation = relation.alias;
      found = &candidate;
    }
  }
  if (!found && scope.outer) return resolve(node, e, *scope.outer);
  if (!found) {
    const std::string name = node.qualifier.empty() ? node.name : node.qualifier + "." + node.name;
    fail("Invalid column name '" + name + "'", e.offset);
  }
  node.column = found->name;
  return found->type;
}

Type Resolver::resolve(Star&, Expression& e, const Scope&) { fail("Incorrect syntax: '*' is no value", e.offset); }

Type Resolver::resolve(LastIdentity&, Expression&, const Scope&) { return decimalType(38, 0); }

Type Resolver::resolve(Variable& node, Expression& e, const Scope&) {
  fail("Must declare the scalar variable \"" + node.name + "\"", e.offset);
}

Type Resolver::resolve(Not& node, Expression&, const Scope& scope) { return condition(scope, node.operand); }

Type Resolver::resolve(Sign& node, Expression& e, const Scope& scope) {
  const Type type = expression(*node.operand, scope);
  e.null = node.operand->null;
  if (node.negative && (type.kind == TypeKind::Text || type.kind == TypeKind::DateTime))
    fail("Operand data type " + typeName(type) + " is invalid for minus", e.offset);
  return type;
}

Type Resolver::resolve(Logic& node, Expression&, const Scope& scope) { return condition(scope, node.left, node.right); }

Type Resolver::resolve(Comparison& node, Expression&, const Scope& scope) {
  return condition(scope, node.left, node.right);
}

Type Resolver::resolve(Arithmetic& node, Expression& e, const Scope& scope) {
  const Type left = expression(*node.left, scope);
  const Type right = expression(*node.right, scope);
  e.null = node.left->null || node.right->null;
  if (e.null) return {};
  if (node.op == ArithmeticOperator::Add && left.kind == TypeKind::Text && right.kind == TypeKind::Text) {
    node.op = ArithmeticOperator::Concatenate;
    node.leftType = left;
    node.rightType = right;
    return concatenationType(left, right);
  }
  if (left.kind == TypeKind::DateTime || right.kind == TypeKind::DateTime)
    fail("Arithmetic on dates is done with DATEADD and DATEDIFF", e.offset);
  const auto* divisor = node.right->as<Constant>();
  const int digits = divisor ? static_cast<int>(scan_.literals[divisor->literal].text.size()) : 0;
  const auto types = arithmeticTypes(node.op, left, right, digits);
  node.leftType = types.left;
  node.rightType = types.right;
  return types.result;
}

Type Resolver::resolve(Cast& node, Expression& e, const Scope& scope) {
  const Type from = expression(*node.value, scope);
  e.null = node.value->null;
  const bool styled = from.kind == TypeKind::DateTime && node.target.kind == TypeKind::Text && node.style;
  if (styled && *node.style != 103 && *node.style != 112 && *node.style != 120)
    fail("CONVERT knows the date styles 103, 112 and 120", e.offset);
  return node.target;
}

Type Resolver::resolve(Case& node, Expression&, const Scope& scope) {
  optional(node.operand, scope);
  Type type;
  for (auto& when : node.whens) {
    expression(*when.condition, scope);
    type = unify(type, expression(*when.result, scope));
  }
  if (node.otherwise)
    type = unify(type, expression(*node.otherwise, scope));
  else
    type.nullable = true;
  return type;
}

Type Resolver::resolve(InList& node, Expression&, const Scope& scope) {
  expression(*node.value, scope);
  for (auto& member : node.members) expression(*member, scope);
  return bitType();
}

Type Resolver::resolve(InQuery& node, Expression&, const Scope& scope) {
  const Type type = expression(*node.value, scope);
  select(*node.query, &scope);
  if (node.query->columns.size() != 1)
    throw values::Errore("A query with another number of columns than its place asks for");
  const auto* literal = node.value->as<Constant>();
  const Type& among = node.query->columns.front().type;
  node.common = literal ? comparisonType(among, scan_.literals[literal->literal]) : unify(type, among);
  return bitType();
}

Type Resolver::resolve(Between& node, Expression&, const Scope& scope) {
  return condition(scope, node.value, node.from, node.to);
}

Type Resolver::resolve(Like& node, Expression&, const Scope& scope) {
  return condition(scope, node.value, node.pattern);
}

Type Resolver::resolve(IsNull& node, Expression&, const Scope& scope) { return condition(scope, node.value); }

Type Resolver::resolve(Exists& node, Expression&, const Scope& scope) {
  select(*node.query, &scope);
  return bitType();
}

Type Resolver::resolve(ScalarQuery& node, Expression& e, const Scope& scope) {
  select(*node.query, &scope);
  if (node.query->columns.size() != 1) fail("A subquery used as a value gives one column", e.offset);
  return node.query->columns.front().type;
}

}  // namespace tsql
