#include <cassert>
#include <utility>

#include "postgres/emitter/Emitter.h"
#include "tsql/TypeRules.h"

namespace postgres {

using namespace tsql;
using engine::call, engine::infix, engine::notIf, engine::symbol, engine::mirrored;

namespace {

constexpr std::string_view kUnknownTruth = "NULL::boolean";

bool ordersTexts(ComparisonOperator op) {
  return op != ComparisonOperator::Equal && op != ComparisonOperator::NotEqual;
}

std::string spaced(ComparisonOperator op) { return " " + std::string(symbol(op)) + " "; }

/// A truth value is no number to the server.
std::string numberWords(const Piece& piece) {
  return piece.type.kind == TypeKind::Bit ? "(" + piece.sql + ")::int4" : piece.sql;
}

bool isNumber(const Type& type) { return isNumeric(type) || type.kind == TypeKind::Float; }

std::string tenTo(int exponent) { return "1" + std::string(static_cast<std::size_t>(exponent), '0'); }

}  // namespace

std::string quotient(const std::string& a, const std::string& b, int scale) {
  if (scale == 0) return call("div", {a, b});
  const std::string unit = "0." + std::string(static_cast<std::size_t>(scale) - 1, '0') + "1";
  return infix(call("div", {a + " * " + tenTo(scale), b}), " * ", unit);
}

Piece Emitter::expression(const Expression& e) {
  if (!groups_.empty() && !inAggregate_ && !writesLiterals_ && !e.as<Constant>()) {
    const auto said = signature(e);
    for (const auto& group : groups_)
      if (group.signature == said) return group.piece;
  }
  return plainExpression(e);
}

std::string Emitter::signature(const Expression& e) {
  const bool before = std::exchange(writesLiterals_, true);
  auto said = value(plainExpression(e));
  writesLiterals_ = before;
  return said;
}

Piece Emitter::plainExpression(const Expression& e) {
  if (const auto* constant = e.as<Constant>()) return {{}, e.type, constant->literal};
  if (const auto* name = e.as<ColumnName>()) return column(name->relation, name->column, e.type);
  if (e.null) return {"NULL", e.type, std::nullopt, true};
  if (const auto* sign = e.as<tsql::Sign>()) return signedPiece(*sign);
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
  return {"(- " + numberWords(operand) + ")", operand.type};
}

std::string Emitter::sql(const Arithmetic& node, const Expression& e) {
  const auto side = [&](const Expression& operand, const Type& as) {
    Piece piece = expression(operand);
    if (node.op == ArithmeticOperator::Concatenate) return converted(valued(std::move(piece)), textType(0));
    // A text is read as a number at once; a number stays what it is: the server finds the common type.
    if (piece.type.kind == TypeKind::Text || piece.null) return converted(piece, as);
    piece = valued(std::move(piece));
    if (e.type.kind == TypeKind::Float) return converted(piece, floatType());
    const bool narrow = e.type.kind == TypeKind::Integer && piece.type.kind == TypeKind::Integer &&
                        piece.type.precision < e.type.precision;
    if (narrow) return converted(piece, e.type);
    if (node.op == ArithmeticOperator::Divide && e.type.kind == TypeKind::Decimal)
      return numberWords(piece) + "::numeric";
    return numberWords(piece);
  };
  const auto left = side(*node.left, node.leftType);
  const auto right = side(*node.right, node.rightType);
  const bool real = e.type.kind == TypeKind::Float;
  switch (node.op) {
    case ArithmeticOperator::Add: return infix(left, " + ", right);
    case ArithmeticOperator::Subtract: return infix(left, " - ", right);
    case ArithmeticOperator::Multiply: return infix(left, " * ", right);
    case ArithmeticOperator::Concatenate: return infix(left, " || ", right);
    case ArithmeticOperator::Divide:
      return e.type.kind == TypeKind::Decimal ? quotient(left, right, e.type.scale) : infix(left, " / ", right);
    case ArithmeticOperator::Modulo:
      return real ? "(" + left + " - " + right + " * trunc(" + left + " / " + right + "))" : infix(left, " % ", right);
  }
  return {};
}

std::string Emitter::literalComparison(ComparisonOperator op, const Piece& side, const Piece& literal) {
  const Literal& written = scan_.literals[*literal.literal];
  const Type type = comparisonType(side.type, written);
  if (side.type.kind == TypeKind::Unknown) return std::string(kUnknownTruth);
  Parameter parameter{.use = Parameter::Use::Value,
                      .type = parameterType(type),
                      .binding = {.literal = *literal.literal, .target = type, .column = {}}};
  if (type.kind == TypeKind::Text) {
    if (ordersTexts(op)) {
      // Once for the statement, not once for each row.
      parameter.type = kText;
      const auto key = "(SELECT " + orderKey(bind(parameter)) + ")";
      return infix(orderKey(side.sql), spaced(op), key);
    }
    parameter.use = Parameter::Use::Folded;
    parameter.type = kText;
    return infix(folded(side.sql), spaced(op), bind(parameter));
  }
  const auto left = side.type.kind == TypeKind::Text ? converted(side, type) : numberWords(side);
  parameter.binding.how = engine::Binding::How::ToType;
  // A number beyond the column's range is compared all the same.
  if (type.kind == TypeKind::Integer || type.kind == TypeKind::Bit) {
    parameter.binding.target = integerType(64);
    parameter.type = kInt8;
  }
  return infix(left, spaced(op), bind(parameter));
}

std::string Emitter::comparison(ComparisonOperator op, const Piece& a, const Piece& b) {
  if (a.null || b.null) return std::string(kUnknownTruth);
  if (b.literal) return literalComparison(op, valued(a), b);
  if (a.literal) return literalComparison(mirrored(op), b, a);
  const Type type = unify(a.type, b.type);
  if (type.kind == TypeKind::Text) {
    const auto form = ordersTexts(op) ? orderKey : folded;
    return infix(form(converted(a, type)), spaced(op), form(converted(b, type)));
  }
  // Numbers of any kinds compare exactly as they are.
  const auto side = [&](const Piece& piece) {
    return isNumber(piece.type) && isNumber(type) ? numberWords(piece) : converted(piece, type);
  };
  return infix(side(a), spaced(op), side(b));
}

std::string Emitter::sql(const Case& node, const Expression& e) {
  std::optional<Piece> operand;
  if (node.operand) operand = valued(expression(*node.operand));
  std::string sql = "CASE";
  for (const auto& when : node.whens) {
    const auto condition =
        operand ? comparison(ComparisonOperator::Equal, *operand, expression(*when.condition)) : words(*when.condition);
    sql += " WHEN " + condition + " THEN " + converted(expression(*when.result), e.type);
  }
  if (node.otherwise) sql += " ELSE " + converted(expression(*node.otherwise), e.type);
  return "(" + sql + " END)";
}

std::string Emitter::sql(const InQuery& node, const Expression&) {
  const Piece left = expression(*node.value);
  auto sql = converted(left, node.common);
  const std::vector<Type> targets{node.common};
  std::string rows = select(*node.query, &targets);
  if (node.common.kind == TypeKind::Text) {
    sql = folded(sql);
    rows = "SELECT " + folded("q.c0") + " FROM (" + rows + ") AS q(c0)";
  }
  return "(" + sql + (node.negated ? " NOT IN (" : " IN (") + rows + "))";
}

std::string Emitter::sql(const InList& node, const Expression&) {
  const Piece left = valued(expression(*node.value));
  const bool text = left.type.kind == TypeKind::Text;
  const bool whole = left.type.kind == TypeKind::Integer;
  std::string list;
  std::string others;
  for (const auto& each : node.members) {
    const Piece member = expression(*each);
    const auto* constant = each->as<Constant>();
    const auto kind = constant ? scan_.literals[constant->literal].kind : Literal::Kind::Float;
    const bool plain =
        member.literal && (text    ? kind == Literal::Kind::Text
                           : whole ? kind == Literal::Kind::Integer
                                   : left.type.kind == TypeKind::Decimal || left.type.kind == TypeKind::DateTime);
    if (!plain) {
      // Each is converted as a comparison would.
      others += (others.empty() ? "" : " OR ") + comparison(ComparisonOperator::Equal, left, member);
      continue;
    }
    Parameter parameter{.use = text ? Parameter::Use::Folded : Parameter::Use::Value,
                        .type = text    ? kText
                                : whole ? kInt8
                                        : parameterType(left.type),
                        .binding = {.how = engine::Binding::How::ToType,
                                    .literal = *member.literal,
                                    .target = whole ? integerType(64) : left.type,
                                    .column = {}}};
    list += (list.empty() ? "" : ", ") + bind(std::move(parameter));
  }
  std::string sql;
  if (!list.empty()) sql = (text ? folded(left.sql) : left.sql) + " IN (" + list + ")";
  if (!others.empty()) sql += (sql.empty() ? "" : " OR ") + others;
  return notIf(node.negated, "(" + sql + ")");
}

std::string Emitter::sql(const Like& node, const Expression&) {
  const Piece left = valued(expression(*node.value));
  const Piece pattern = expression(*node.pattern);
  if (left.null || pattern.null) return std::string(kUnknownTruth);
  const auto matched = call("bk_upper", {converted(left, textType(0))});
  if (!pattern.literal)
    return notIf(node.negated, matched + " ~ " + call("bk_like_regex", {converted(pattern, textType(0))}));
  const auto bound = [&](Parameter::Use use) {
    return bind({.use = use, .type = kText, .binding = {.literal = *pattern.literal, .target = {}, .column = {}}});
  };
  if (!node.prefix) return notIf(node.negated, matched + " ~ " + bound(Parameter::Use::Regex));
  std::string sql = call("starts_with", {matched, bound(Parameter::Use::Prefix)});
  if (left.column && !node.negated) {
    // The range lets an index serve the pattern.
    const auto key = folded(left.sql);
    const auto from = bound(Parameter::Use::PrefixFrom);
    const auto to = bound(Parameter::Use::PrefixTo);
    sql = key + " >= " + from + " AND " + key + " < " + to + " AND " + sql;
  }
  return notIf(node.negated, sql);
}

}  // namespace postgres
