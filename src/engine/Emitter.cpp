#include "engine/Emitter.h"

namespace engine {

using namespace tsql;

Piece Emitter::valued(Piece piece) {
  if (piece.literal) {
    piece.sql = value(piece);
    piece.literal.reset();
  }
  return piece;
}

Piece Emitter::column(std::string_view relation, std::string_view name, const Type& type) const {
  return {nameWords(relation) + "." + nameWords(name), type, std::nullopt, false, true};
}

std::vector<Piece> Emitter::items(const Select& select) {
  std::vector<Piece> pieces;
  for (const auto& item : select.items) {
    if (const auto* star = item.value->as<Star>())
      for (const auto& [relation, part] : star->parts) pieces.push_back(column(relation, part.name, part.type));
    else
      pieces.push_back(expression(*item.value));
  }
  return pieces;
}

/// The connection answers for it, and only when nothing else is asked.
std::string Emitter::sql(const LastIdentity&, const Expression& e) {
  fail("Must declare the scalar variable \"@@IDENTITY\"", e.offset);
}

std::string Emitter::sql(const Not& node, const Expression&) { return "(NOT " + words(*node.operand) + ")"; }

std::string Emitter::sql(const Logic& node, const Expression&) {
  const auto left = words(*node.left);
  return infix(left, node.op == LogicOperator::And ? " AND " : " OR ", words(*node.right));
}

std::string Emitter::sql(const Comparison& node, const Expression&) {
  const Piece left = expression(*node.left);
  return comparison(node.op, left, expression(*node.right));
}

std::string Emitter::sql(const Between& node, const Expression&) {
  const Piece value = valued(expression(*node.value));
  const auto from = comparison(ComparisonOperator::GreaterOrEqual, value, expression(*node.from));
  const auto to = comparison(ComparisonOperator::LessOrEqual, value, expression(*node.to));
  return notIf(node.negated, infix(from, " AND ", to));
}

std::string Emitter::sql(const IsNull& node, const Expression&) {
  return "(" + words(*node.value) + (node.negated ? " IS NOT NULL)" : " IS NULL)");
}

std::string Emitter::sql(const Exists& node, const Expression&) { return "EXISTS (" + subquery(*node.query) + ")"; }

std::string Emitter::sql(const ScalarQuery& node, const Expression&) { return "(" + subquery(*node.query) + ")"; }

std::string Emitter::guard(const Change& change) {
  if (!change.condition) return {};
  return std::string(change.negated ? "NOT " : "") + "EXISTS (" + subquery(*change.condition) + ")";
}

std::string Emitter::where(const Change& change) {
  const std::string own = change.where ? words(*change.where) : "";
  const std::string condition = guard(change);
  if (own.empty() && condition.empty()) return {};
  return " WHERE " + own + (own.empty() || condition.empty() ? "" : " AND ") + condition;
}

std::string Emitter::update(const Change& change) {
  const auto sources = allSources(change.sources);
  std::vector<std::string> assignments;
  for (const auto& assignment : change.assignments)
    assignments.push_back(nameWords(assignment.target->name) + " = " +
                          assigned(expression(*assignment.value), *assignment.target));
  return "UPDATE " + nameWords(change.target->name) + " SET " + joined(assignments) + sources + where(change);
}

std::string Emitter::erase(const Change& change) {
  return "DELETE FROM " + nameWords(change.target->name) + where(change);
}

}  // namespace engine
