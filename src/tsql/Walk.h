#pragma once

#include "tsql/Ast.h"

namespace tsql {

template <class Visit>
void walk(const Select& select, const Visit& visit);

/// Visits an expression and everything in it, subqueries too.
template <class Visit>
void walk(const Expression& e, const Visit& visit) {
  visit(e);
  if (e.left) walk(*e.left, visit);
  if (e.right) walk(*e.right, visit);
  for (const auto& argument : e.arguments) walk(*argument, visit);
  if (e.select) walk(*e.select, visit);
}

template <class Visit>
void walk(const Select& select, const Visit& visit) {
  for (const auto& item : select.items) walk(*item.value, visit);
  for (const auto& source : select.sources) {
    if (source.select) walk(*source.select, visit);
    if (source.condition) walk(*source.condition, visit);
  }
  if (select.where) walk(*select.where, visit);
  for (const auto& group : select.groupBy) walk(*group, visit);
  if (select.having) walk(*select.having, visit);
  for (const auto& item : select.orderBy) walk(*item.value, visit);
  if (select.next) walk(*select.next, visit);
}

template <class Visit>
void walkCores(const Select& select, const Visit& visit);

template <class Visit>
void walkCores(const Expression& e, const Visit& visit) {
  if (e.left) walkCores(*e.left, visit);
  if (e.right) walkCores(*e.right, visit);
  for (const auto& argument : e.arguments) walkCores(*argument, visit);
  if (e.select) walkCores(*e.select, visit);
}

/// Visits every SELECT core of a query, those of subqueries and derived tables too.
template <class Visit>
void walkCores(const Select& select, const Visit& visit) {
  visit(select);
  const auto look = [&](const ExpressionPtr& e) {
    if (e) walkCores(*e, visit);
  };
  for (const auto& item : select.items) look(item.value);
  for (const auto& source : select.sources) {
    if (source.select) walkCores(*source.select, visit);
    look(source.condition);
  }
  look(select.where);
  look(select.having);
  if (select.next) walkCores(*select.next, visit);
}

}  // namespace tsql
