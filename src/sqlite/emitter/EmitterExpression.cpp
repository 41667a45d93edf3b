#include <cassert>

#include "sqlite/emitter/Emitter.h"
#include "sqlite/storage/StoredType.h"
#include "tsql/TypeRules.h"

namespace sqlite {

using namespace tsql;

namespace {

/// An operator of the engine, and the functions that do its work where it cannot; none where it always can.
struct ArithmeticWords {
  std::string_view symbol, wide, whole, real;
};
constexpr ArithmeticWords arithmeticWords(ArithmeticOperator op) {
  switch (op) {
    case ArithmeticOperator::Add: return {" + ", "bk_add", "", ""};
    case ArithmeticOperator::Subtract: return {" - ", "bk_sub", "", ""};
    case ArithmeticOperator::Multiply: return {" * ", "bk_mul", "", ""};
    case ArithmeticOperator::Divide: return {"", "bk_div", "bk_int_div", "bk_float_div"};
    case ArithmeticOperator::Modulo: return {"", "bk_mod", "bk_mod", "bk_float_mod"};
    case ArithmeticOperator::Concatenate: return {" || ", "", "", ""};
  }
  return {};
}

}  // namespace

std::string Emitter::collated(const std::string& sql, bool text) const {
  return text ? sql + " COLLATE " + std::string(textOrder_) : sql;
}

/// Both sides in words, comparable as the engine compares.
std::string Emitter::compared(ComparisonOperator op, const std::string& a, const std::string& b, const Type& type,
                              bool column) const {
  const std::string sign = " " + std::string(symbol(op)) + " ";
  if (isWide(type)) return infix(call("bk_cmp", {a, b}), sign, "0");
  return infix(collated(a, type.kind == TypeKind::Text && !column), sign, b);
}

/// Left side of an IN: a computed text has no collation of its own.
std::string Emitter::member(const std::string& sql, bool negated, const Type& type, bool column,
                            const std::string& list) const {
  const bool computed = type.kind == TypeKind::Text && !column;
  return "(" + collated(sql, computed) + (negated ? " NOT IN (" : " IN (") + list + "))";
}

Piece Emitter::expression(const Expression& e) {
  if (const auto* constant = e.as<Constant>()) return {{}, e.type, constant->literal};
  if (const auto* name = e.as<ColumnName>()) return column(name->relation, name->column, e.type);
  if (const auto* sign = e.as<Sign>()) return signedPiece(*sign);
  if (e.null) return {"NULL", e.type, std::nullopt, true};
  return {std::visit(
              [&](const auto& node) -> std::string {
                if constexpr (requires { sql(node, e); }) return sql(node, e);
                assert(false);  // the rest stands above or is refused by the resolver
                return {};
              },
              e.node),
          e.type};
}

Piece Emitter::signedPiece(const tsql::Sign& node) {
  Piece operand = valued(expression(*node.operand));
  if (operand.null || !node.negative) return operand;
  return {isWide(operand.type) ? call("bk_sub", {"0", operand.sql}) : "(-" + operand.sql + ")", operand.type};
}

std::string Emitter::sql(const Arithmetic& node, const Expression& e) {
  Piece a = expression(*node.left);
  Piece b = expression(*node.right);
  const auto with = arithmeticWords(node.op);
  if (node.op == ArithmeticOperator::Concatenate) {
    const auto left = value(a);
    return infix(left, with.symbol, value(b));
  }
  // A text is read as a number at once; a number is bound as it is and then brought to the common type.
  if (a.type.kind == TypeKind::Text) a = {converted(a, node.leftType), node.leftType};
  if (b.type.kind == TypeKind::Text) b = {converted(b, node.rightType), node.rightType};
  a = valued(std::move(a));
  b = valued(std::move(b));
  const auto left = converted(a, node.leftType);
  const auto right = converted(b, node.rightType);
  if (e.type.kind == TypeKind::Float)
    return with.real.empty() ? infix(left, with.symbol, right) : call(with.real, {left, right});
  if (e.type.kind != TypeKind::Decimal)
    return with.whole.empty() ? infix(left, with.symbol, right) : call(with.whole, {left, right});
  if (node.op == ArithmeticOperator::Divide)
    return call(with.wide, {left, std::to_string(scaleOf(node.leftType)), right,
                            std::to_string(scaleOf(node.rightType)), std::to_string(e.type.scale)});
  return with.symbol.empty() || isWide(e.type) ? call(with.wide, {left, right}) : infix(left, with.symbol, right);
}

std::string Emitter::literalComparison(ComparisonOperator op, const Piece& side, const Piece& literal) {
  const Literal& written = scan_.literals[*literal.literal];
  const Type type = comparisonType(side.type, written);
  const auto left = converted(side, type);
  // A literal that decided the type is bound as it is written.
  const bool decided = side.type.kind == TypeKind::Unknown ||
                       (isNumeric(side.type) && type.kind == TypeKind::Decimal && scaleOf(type) > scaleOf(side.type));
  return compared(op, left, decided ? value(literal) : comparable(literal, type), type, side.column);
}

std::string Emitter::comparison(ComparisonOperator op, const Piece& a, const Piece& b) {
  if (a.null || b.null) {
    const auto left = value(a);
    return infix(left, " " + std::string(symbol(op)) + " ", value(b));
  }
  if (b.literal) return literalComparison(op, valued(a), b);
  if (a.literal) return literalComparison(mirrored(op), b, a);
  const Type type = unify(a.type, b.type);
  const auto left = converted(a, type);
  return compared(op, left, converted(b, type), type, a.column || b.column);
}

std::string Emitter::sql(const Case& node, const Expression& e) {
  std::optional<Piece> operand;
  if (node.operand) operand = valued(expression(*node.operand));
  std::vector<std::string> conditions;
  std::vector<Piece> results;
  for (const auto& when : node.whens) {
    conditions.push_back(operand ? comparison(ComparisonOperator::Equal, *operand, expression(*when.condition))
                                 : words(*when.condition));
    results.push_back(expression(*when.result));
  }
  if (node.otherwise) results.push_back(expression(*node.otherwise));
  std::string sql = "CASE";
  for (std::size_t i = 0; i < conditions.size(); ++i)
    sql += " WHEN " + conditions[i] + " THEN " + converted(results[i], e.type);
  if (node.otherwise) sql += " ELSE " + converted(results.back(), e.type);
  return sql + " END";
}

std::string Emitter::sql(const InQuery& node, const Expression&) {
  const Piece left = expression(*node.value);
  const auto sql = comparable(left, node.common);
  const std::vector<Type> targets{node.common};
  return member(sql, node.negated, node.common, left.column, select(*node.query, &targets));
}

std::string Emitter::sql(const InList& node, const Expression&) {
  const Piece left = valued(expression(*node.value));
  std::vector<Piece> members;
  bool plain = !isWide(left.type) && left.type.kind != TypeKind::Unknown;
  for (const auto& each : node.members) {
    members.push_back(expression(*each));
    const Piece& member = members.back();
    plain = plain && (member.null || (sameStorage(left.type, member.type) && member.type.kind != TypeKind::Unknown) ||
                      (member.literal && left.type.kind == TypeKind::DateTime));
  }
  std::string sql;
  if (plain) {
    for (const auto& each : members) sql += (sql.empty() ? "" : ", ") + comparable(each, left.type);
    return member(left.sql, node.negated, left.type, left.column, sql);
  }
  // As a chain of comparisons each value is converted as a comparison would.
  for (const auto& each : members)
    sql += (sql.empty() ? "" : " OR ") + comparison(ComparisonOperator::Equal, left, each);
  return notIf(node.negated, "(" + sql + ")");
}

std::string Emitter::sql(const Like& node, const Expression&) {
  Piece left = valued(expression(*node.value));
  if (left.type.kind != TypeKind::Text) left = {converted(left, textType(0)), textType(0)};
  const Piece pattern = expression(*node.pattern);
  const auto bound = [&](Binding::How how, const Type& target) {
    return bind({.how = how, .literal = *pattern.literal, .target = target, .column = {}});
  };
  const auto words = pattern.literal ? bound(Binding::How::Pattern, {}) : converted(pattern, textType(0));
  std::string sql = call("bk_like", {words, left.sql});
  if (pattern.literal && node.prefix && left.column && !node.negated) {
    // The range lets an index serve the pattern.
    const auto from = bound(Binding::How::RangeFrom, left.type);
    const auto to = bound(Binding::How::RangeTo, left.type);
    sql = left.sql + " >= " + from + " AND " + left.sql + " < " + to + " AND " + sql;
  }
  return notIf(node.negated, sql);
}

}  // namespace sqlite
