#include <algorithm>

#include "sqlite/emitter/Emitter.h"
#include "tsql/Names.h"
#include "values/Errore.h"

namespace sqlite {
using namespace tsql;
namespace {

constexpr std::string_view kComparisons = "= <> <= >= < >";
constexpr std::string_view kTextCollation = " COLLATE BK_TEXT";

bool isComparison(std::string_view op) {
  return !op.empty() && (op[0] == '=' || op[0] == '<' || op[0] == '>') &&
         kComparisons.find(op) != std::string_view::npos;
}

std::string_view mirrored(std::string_view op) {
  if (op == "<") return ">";
  if (op == ">") return "<";
  if (op == "<=") return ">=";
  if (op == ">=") return "<=";
  return op;
}

/// Both sides in words, comparable as the engine compares.
std::string compared(std::string_view op, const std::string& a, const std::string& b, const Type& type, bool collated) {
  if (isWide(type)) return "(bk_cmp(" + a + ", " + b + ") " + std::string(op) + " 0)";
  const bool text = type.kind == TypeKind::Text && !collated;
  return "(" + a + (text ? std::string(kTextCollation) : "") + " " + std::string(op) + " " + b + ")";
}

}  // namespace

std::string Emitter::predicate(const Expression& e, const Scope& scope) { return value(expression(e, scope)); }

Piece Emitter::expression(const Expression& e, const Scope& scope) {
  switch (e.kind) {
    case Expression::Kind::Literal: return {{}, literalType(e.literal), e.literal};
    case Expression::Kind::Null: return Piece::ofNull();
    case Expression::Kind::Column: return column(e, scope);
    case Expression::Kind::Unary: return unary(e, scope);
    case Expression::Kind::Binary: return binary(e, scope);
    case Expression::Kind::Function: return function(e, scope);
    case Expression::Kind::Cast: return cast(e, scope);
    case Expression::Kind::Case: return choice(e, scope);
    case Expression::Kind::In: return in(e, scope);
    case Expression::Kind::Like: return like(e, scope);
    case Expression::Kind::Subquery: return subquery(e, scope);
    case Expression::Kind::Between: {
      const Piece value = valued(expression(*e.left, scope));
      const auto from = comparison(">=", value, expression(*e.arguments[0], scope));
      const auto to = comparison("<=", value, expression(*e.arguments[1], scope));
      return {(e.negated ? "(NOT (" : "((") + from + " AND " + to + "))", booleanType()};
    }
    case Expression::Kind::IsNull:
      return {"(" + value(expression(*e.left, scope)) + (e.negated ? " IS NOT NULL)" : " IS NULL)"), booleanType()};
    case Expression::Kind::Exists: return {"EXISTS (" + select(*e.select, &scope).sql + ")", booleanType()};
    case Expression::Kind::Star: fail("Incorrect syntax: '*' is no value", e.offset);
    case Expression::Kind::Variable: fail("Must declare the scalar variable \"" + e.name + "\"", e.offset);
  }
  fail("Incorrect syntax", e.offset);
}

Piece Emitter::unary(const Expression& e, const Scope& scope) {
  if (e.name == "NOT") return {"(NOT " + predicate(*e.left, scope) + ")", booleanType()};
  Piece operand = valued(expression(*e.left, scope));
  if (operand.null || e.name == "+") return operand;
  if (operand.type.kind == TypeKind::Text || operand.type.kind == TypeKind::DateTime)
    fail("Operand data type " + typeName(operand.type) + " is invalid for minus", e.offset);
  return {isWide(operand.type) ? "bk_sub(0, " + operand.sql + ")" : "(-" + operand.sql + ")", operand.type};
}

Piece Emitter::binary(const Expression& e, const Scope& scope) {
  if (e.name == "AND" || e.name == "OR")
    return {"(" + predicate(*e.left, scope) + " " + e.name + " " + predicate(*e.right, scope) + ")", booleanType()};
  const Piece a = expression(*e.left, scope);
  const Piece b = expression(*e.right, scope);
  if (isComparison(e.name)) return {comparison(e.name, a, b), booleanType()};
  if (a.null || b.null) return Piece::ofNull();
  if (e.name == "+" && a.type.kind == TypeKind::Text && b.type.kind == TypeKind::Text) return concatenation(a, b);
  if (a.type.kind == TypeKind::DateTime || b.type.kind == TypeKind::DateTime)
    fail("Arithmetic on dates is done with DATEADD and DATEDIFF", e.offset);
  return arithmetic(e.name[0], a, b);
}

Piece Emitter::concatenation(Piece a, Piece b) {
  Type type = textType(a.type.length == 0 || b.type.length == 0 ? 0 : a.type.length + b.type.length,
                       a.type.wide || b.type.wide);
  return {"(" + value(a) + " || " + value(b) + ")", type};
}

Piece Emitter::arithmetic(char op, Piece a, Piece b) {
  const int divisorDigits = b.literal ? static_cast<int>(scan_.literals[*b.literal].text.size()) : 0;
  // Text among numbers is read as a number of the other's type.
  if (a.type.kind == TypeKind::Text) a = {converted(a, b.type), b.type};
  if (b.type.kind == TypeKind::Text) b = {converted(b, a.type), a.type};
  a = valued(std::move(a));
  b = valued(std::move(b));
  if (a.type.kind == TypeKind::Float || b.type.kind == TypeKind::Float) {
    const Type type{.kind = TypeKind::Float};
    const auto left = converted(a, type);
    const auto right = converted(b, type);
    if (op == '/' || op == '%')
      return {std::string(op == '/' ? "bk_float_div(" : "bk_float_mod(") + left + ", " + right + ")", type};
    return {"(" + left + " " + op + " " + right + ")", type};
  }
  const bool decimal = a.type.kind == TypeKind::Decimal || b.type.kind == TypeKind::Decimal;
  const int sa = scaleOf(a.type), sb = scaleOf(b.type), pa = precisionOf(a.type), pb = precisionOf(b.type);
  if (!decimal) {
    const Type type = unify(unify(a.type, b.type), integerType(32));
    if (op == '/') return {"bk_int_div(" + a.sql + ", " + b.sql + ")", type};
    if (op == '%') return {"bk_mod(" + a.sql + ", " + b.sql + ")", type};
    return {"(" + a.sql + " " + op + " " + b.sql + ")", type};
  }
  if (op == '*') {
    const Type type = decimalType(pa + pb + 1, std::min(sa + sb, 38));
    if (type.precision <= 18) return {"(" + a.sql + " * " + b.sql + ")", type};
    return {"bk_mul(" + a.sql + ", " + b.sql + ")", type};
  }
  if (op == '/') {
    const int digits = divisorDigits > 0 && sb == 0 ? divisorDigits : pb;
    const int whole = pa - sa + sb;
    int scale = std::max(6, sa + digits + 1);
    // More than 38 digits in all: decimals give way, but six of them stay.
    if (whole + scale > 38) scale = std::max(std::min(scale, 38 - whole), 6);
    return {"bk_div(" + a.sql + ", " + std::to_string(sa) + ", " + b.sql + ", " + std::to_string(sb) + ", " +
                std::to_string(scale) + ")",
            decimalType(38, scale)};
  }
  const Type common = unify(a.type, b.type);
  const auto left = converted(a, common);
  const auto right = converted(b, common);
  if (op == '%') return {"bk_mod(" + left + ", " + right + ")", common};
  Type type = decimalType(common.precision + 1, common.scale);
  if (type.precision <= 18) return {"(" + left + " " + op + " " + right + ")", type};
  return {std::string(op == '+' ? "bk_add(" : "bk_sub(") + left + ", " + right + ")", type};
}

std::string Emitter::literalComparison(std::string_view op, const Piece& side, const Piece& literal) {
  const Type& type = side.type;
  const Type other = literalType(*literal.literal);
  if (type.kind == TypeKind::Text && other.kind != TypeKind::Text) {
    // SQL Server reads the text as a number; text that is none is an error.
    const Type number = other.kind == TypeKind::Integer ? decimalType(18, 0) : other;
    return compared(op, converted(side, number), converted(literal, number), number, true);
  }
  if (isNumeric(type) && other.kind == TypeKind::Decimal && other.scale > scaleOf(type))
    return compared(op, converted(side, decimalType(precisionOf(type) + other.scale, other.scale)), value(literal),
                    decimalType(precisionOf(type) + other.scale, other.scale), true);
  if (type.kind == TypeKind::Unknown) return compared(op, side.sql, value(literal), other, side.column);
  return compared(op, side.sql, converted(literal, type), type, side.column);
}

std::string Emitter::comparison(std::string_view op, const Piece& a, const Piece& b) {
  if (a.null || b.null) return "(" + value(a) + " " + std::string(op) + " " + value(b) + ")";
  if (a.literal && b.literal) return literalComparison(op, valued(a), b);
  if (b.literal) return literalComparison(op, a, b);
  if (a.literal) return literalComparison(mirrored(op), b, a);
  const Type type = unify(a.type, b.type);
  return compared(op, converted(a, type), converted(b, type), type, a.column || b.column);
}

Piece Emitter::choice(const Expression& e, const Scope& scope) {
  std::vector<std::string> conditions;
  std::vector<Piece> results;
  std::optional<Piece> operand;
  if (e.left) operand = valued(expression(*e.left, scope));
  Type type;
  for (std::size_t i = 0; i < e.arguments.size(); i += 2) {
    conditions.push_back(operand ? comparison("=", *operand, expression(*e.arguments[i], scope))
                                 : predicate(*e.arguments[i], scope));
    results.push_back(expression(*e.arguments[i + 1], scope));
    type = unify(type, results.back().type);
  }
  if (e.right) {
    results.push_back(expression(*e.right, scope));
    type = unify(type, results.back().type);
  }
  std::string sql = "CASE";
  for (std::size_t i = 0; i < conditions.size(); ++i)
    sql += " WHEN " + conditions[i] + " THEN " + converted(results[i], type);
  if (e.right) sql += " ELSE " + converted(results.back(), type);
  return {sql + " END", type};
}

Piece Emitter::in(const Expression& e, const Scope& scope) {
  Piece left = expression(*e.left, scope);
  const std::string_view word = e.negated ? " NOT IN (" : " IN (";
  if (e.select) {
    Type type = left.type;
    if (left.literal) {
      const auto mark = bindings_.size();
      type = select(*e.select, &scope).columns.front().type;
      bindings_.resize(mark);
    }
    const std::vector<Type> targets{type};
    const auto sql = converted(left, type);
    const auto rows = select(*e.select, &scope, &targets);
    if (rows.columns.size() != 1) fail("A subquery of IN gives one column", e.offset);
    const bool collate = type.kind == TypeKind::Text && !left.column;
    return {"(" + sql + (collate ? " COLLATE BK_TEXT" : "") + std::string(word) + rows.sql + "))", booleanType()};
  }
  // As a chain of comparisons each value is converted as a comparison would.
  left = valued(std::move(left));
  std::vector<Piece> members;
  bool plain = !isWide(left.type) && left.type.kind != TypeKind::Unknown;
  for (const auto& argument : e.arguments) {
    members.push_back(expression(*argument, scope));
    const Piece& member = members.back();
    plain = plain && (member.null || (sameStorage(left.type, member.type) && member.type.kind != TypeKind::Unknown) ||
                      (member.literal && left.type.kind == TypeKind::DateTime));
  }
  std::string sql;
  if (plain) {
    for (const auto& member : members) sql += (sql.empty() ? "" : ", ") + converted(member, left.type);
    const bool collate = left.type.kind == TypeKind::Text && !left.column;
    return {"(" + left.sql + (collate ? " COLLATE BK_TEXT" : "") + std::string(word) + sql + "))", booleanType()};
  }
  for (const auto& member : members) sql += (sql.empty() ? "" : " OR ") + comparison("=", left, member);
  return {(e.negated ? "(NOT (" : "((") + sql + "))", booleanType()};
}

Piece Emitter::like(const Expression& e, const Scope& scope) {
  Piece left = valued(expression(*e.left, scope));
  if (left.type.kind != TypeKind::Text) left = {converted(left, textType(0)), textType(0)};
  const Piece pattern = expression(*e.arguments[0], scope);
  const auto words = pattern.literal
                         ? bind({.how = Binding::How::Pattern, .literal = *pattern.literal, .target = {}, .column = {}})
                         : converted(pattern, textType(0));
  std::string sql = "bk_like(" + words + ", " + left.sql + ")";
  if (pattern.literal && e.prefixPattern && left.column && !e.negated) {
    // The range lets an index serve the pattern.
    const auto bound = [&](Binding::How how) {
      return bind({.how = how, .literal = *pattern.literal, .target = left.type, .column = {}});
    };
    const auto from = bound(Binding::How::RangeFrom);
    const auto to = bound(Binding::How::RangeTo);
    sql = left.sql + " >= " + from + " AND " + left.sql + " < " + to + " AND " + sql;
  }
  return {(e.negated ? "(NOT " : "(") + sql + ")", booleanType()};
}

Piece Emitter::subquery(const Expression& e, const Scope& scope) {
  const auto rows = select(*e.select, &scope);
  if (rows.columns.size() != 1) fail("A subquery used as a value gives one column", e.offset);
  return {"(" + rows.sql + ")", rows.columns.front().type};
}

}  // namespace sqlite
