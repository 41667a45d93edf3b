#include "engine/SqlWords.h"

#include "tsql/Names.h"
#include "tsql/Walk.h"

namespace engine {

using namespace tsql;

namespace {

std::string enclosed(std::string_view text, char quote) {
  std::string result(1, quote);
  for (const char c : text) result.append(c == quote ? 2 : 1, c);
  return result += quote;
}

}  // namespace

std::string_view symbol(ComparisonOperator op) {
  switch (op) {
    case ComparisonOperator::Equal: return "=";
    case ComparisonOperator::NotEqual: return "<>";
    case ComparisonOperator::Less: return "<";
    case ComparisonOperator::Greater: return ">";
    case ComparisonOperator::LessOrEqual: return "<=";
    case ComparisonOperator::GreaterOrEqual: return ">=";
  }
  return {};
}

ComparisonOperator mirrored(ComparisonOperator op) {
  switch (op) {
    case ComparisonOperator::Less: return ComparisonOperator::Greater;
    case ComparisonOperator::Greater: return ComparisonOperator::Less;
    case ComparisonOperator::LessOrEqual: return ComparisonOperator::GreaterOrEqual;
    case ComparisonOperator::GreaterOrEqual: return ComparisonOperator::LessOrEqual;
    default: return op;
  }
}

std::string_view joinWords(JoinKind join) {
  switch (join) {
    case JoinKind::None: return " FROM ";
    case JoinKind::Comma: return ", ";
    case JoinKind::Inner: return " INNER JOIN ";
    case JoinKind::Cross: return " CROSS JOIN ";
    case JoinKind::Left: return " LEFT OUTER JOIN ";
    case JoinKind::Right: return " RIGHT OUTER JOIN ";
    case JoinKind::Full: return " FULL OUTER JOIN ";
  }
  return {};
}

std::string_view operationWords(SetOperation operation) {
  switch (operation) {
    case SetOperation::None: break;
    case SetOperation::Union: return " UNION ";
    case SetOperation::UnionAll: return " UNION ALL ";
    case SetOperation::Except: return " EXCEPT ";
    case SetOperation::Intersect: return " INTERSECT ";
  }
  return {};
}

std::vector<Type> typesOf(const std::vector<ResultColumn>& columns) {
  std::vector<Type> types;
  for (const auto& column : columns) types.push_back(column.type);
  return types;
}

/// Under DISTINCT a LEFT JOIN whose table is named nowhere else can only repeat rows that DISTINCT removes again.
std::vector<bool> droppedJoins(const Select& select, const std::vector<OrderItem>& orderBy) {
  std::vector<bool> dropped(select.sources.size(), false);
  if (!select.distinct || !select.groupBy.empty() || select.top) return dropped;
  for (std::size_t i = 1; i < select.sources.size(); ++i) {
    const Source& source = select.sources[i];
    if (source.join != JoinKind::Left || !source.catalogTable) continue;
    bool used = false;
    const auto look = [&](const Expression& e) {
      if (const auto* star = e.as<Star>())
        used = used || star->qualifier.empty() || sameName(star->qualifier, source.shownName());
      if (const auto* column = e.as<ColumnName>())
        used = used || (column->qualifier.empty() ? source.catalogTable->find(column->name) != nullptr
                                                  : sameName(column->qualifier, source.shownName()));
    };
    for (const auto& item : select.items) walkExpressions(*item.value, look);
    if (select.where) walkExpressions(*select.where, look);
    if (select.having) walkExpressions(*select.having, look);
    for (std::size_t j = 0; j < select.sources.size(); ++j)
      if (j != i && select.sources[j].condition) walkExpressions(*select.sources[j].condition, look);
    for (const auto& item : orderBy) walkExpressions(*item.value, look);
    dropped[i] = !used;
  }
  return dropped;
}

std::string infix(std::string_view left, std::string_view op, std::string_view right) {
  return std::string("(").append(left).append(op).append(right).append(")");
}

std::string joined(const std::vector<std::string>& words) {
  std::string sql;
  for (const auto& word : words) sql += (sql.empty() ? "" : ", ") + word;
  return sql;
}

std::string notIf(bool negated, const std::string& condition) { return (negated ? "(NOT " : "(") + condition + ")"; }

std::string quotedName(std::string_view name) { return enclosed(name, '"'); }

std::string quotedText(std::string_view text) { return enclosed(text, '\''); }

std::string call(std::string_view function, std::initializer_list<std::string_view> arguments) {
  std::string sql(function);
  std::string_view separator = "(";
  for (const auto argument : arguments) {
    sql.append(separator).append(argument);
    separator = ", ";
  }
  return sql += ")";
}

bool asksIdentity(const Query& query) {
  const Select& select = *query.select;
  return query.with.empty() && !select.next && select.sources.empty() && select.items.size() == 1 &&
         select.items[0].value->as<LastIdentity>();
}

}  // namespace engine
