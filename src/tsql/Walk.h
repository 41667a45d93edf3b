#pragma once

#include "tsql/Statement.h"

namespace tsql {

/// Calls back with every expression and every SELECT core of a tree, those of subqueries and derived tables too.
template <class OnExpression, class OnCore>
class Walker {
 public:
  Walker(const OnExpression& onExpression, const OnCore& onCore) : onExpression_(onExpression), onCore_(onCore) {}

  void walk(const Select& select) const {
    onCore_(select);
    for (const auto& item : select.items) walk(item.value);
    for (const auto& source : select.sources) {
      walk(source.select);
      walk(source.condition);
    }
    walk(select.where);
    walk(select.groupBy);
    walk(select.having);
    for (const auto& item : select.orderBy) walk(item.value);
    walk(select.next);
  }

  void walk(const Expression& e) const {
    onExpression_(e);
    std::visit([&](const auto& node) { children(node); }, e.node);
  }

 private:
  void walk(const ExpressionPtr& e) const {
    if (e) walk(*e);
  }
  void walk(const SelectPtr& select) const {
    if (select) walk(*select);
  }
  void walk(const std::vector<ExpressionPtr>& list) const {
    for (const auto& e : list) walk(e);
  }
  template <class... Parts>
  void all(const Parts&... parts) const {
    (walk(parts), ...);
  }

  void children(const Constant&) const {}
  void children(const Null&) const {}
  void children(const ColumnName&) const {}
  void children(const Star&) const {}
  void children(const LastIdentity&) const {}
  void children(const Variable&) const {}
  void children(const Not& node) const { all(node.operand); }
  void children(const Sign& node) const { all(node.operand); }
  void children(const Logic& node) const { all(node.left, node.right); }
  void children(const Comparison& node) const { all(node.left, node.right); }
  void children(const Arithmetic& node) const { all(node.left, node.right); }
  void children(const Call& node) const { all(node.arguments); }
  void children(const Cast& node) const { all(node.value); }
  void children(const Case& node) const {
    all(node.operand, node.otherwise);
    for (const auto& when : node.whens) all(when.condition, when.result);
  }
  void children(const InList& node) const { all(node.value, node.members); }
  void children(const InQuery& node) const { all(node.value, node.query); }
  void children(const Between& node) const { all(node.value, node.from, node.to); }
  void children(const Like& node) const { all(node.value, node.pattern); }
  void children(const IsNull& node) const { all(node.value); }
  void children(const Exists& node) const { all(node.query); }
  void children(const ScalarQuery& node) const { all(node.query); }

  const OnExpression& onExpression_;
  const OnCore& onCore_;
};

template <class Tree, class Visit>
void walkExpressions(const Tree& tree, const Visit& visit) {
  const auto ignore = [](const Select&) {};
  Walker(visit, ignore).walk(tree);
}

template <class Visit>
void walkCores(const Select& select, const Visit& visit) {
  const auto ignore = [](const Expression&) {};
  Walker(ignore, visit).walk(select);
}

}  // namespace tsql
