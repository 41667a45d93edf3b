#include <algorithm>
#include <array>

#include "tsql/Names.h"
#include "tsql/Parser.h"

namespace tsql {
namespace {

/// Words that end an item, so that they are never an alias without AS.
constexpr std::array<std::string_view, 27> kReserved = {
    "FROM",  "WHERE", "GROUP", "ORDER", "HAVING", "UNION", "EXCEPT", "INTERSECT", "LEFT",
    "RIGHT", "FULL",  "INNER", "CROSS", "JOIN",   "ON",    "WITH",   "AND",       "OR",
    "SET",   "END",   "BEGIN", "ELSE",  "WHEN",   "THEN",  "SELECT", "OPTION",    "VALUES"};

constexpr std::array<std::string_view, 12> kHints = {"NOLOCK",  "READUNCOMMITTED", "READCOMMITTED", "ROWLOCK",
                                                     "PAGLOCK", "TABLOCK",         "TABLOCKX",      "UPDLOCK",
                                                     "XLOCK",   "HOLDLOCK",        "READPAST",      "SERIALIZABLE"};

template <std::size_t N>
bool contains(const std::array<std::string_view, N>& words, std::string_view word) {
  return std::any_of(words.begin(), words.end(), [&](auto candidate) { return sameName(candidate, word); });
}

}  // namespace

Query Parser::query() {
  Query query;
  if (takeWord("WITH")) {
    do {
      auto& table = query.with.emplace_back();
      table.name = name("the name of a common table expression");
      if (isSymbol("(")) table.columnNames = nameList();
      expectWord("AS");
      expectSymbol("(");
      table.select = selectExpression();
      expectSymbol(")");
    } while (takeSymbol(","));
  }
  query.select = selectExpression();
  return query;
}

SelectPtr Parser::selectExpression() {
  constexpr int kMostBranches = 500;
  SelectPtr first = selectCore();
  Select* last = first.get();
  for (int branches = 1;; ++branches) {
    if (branches > kMostBranches) unexpected("fewer queries joined by UNION, EXCEPT or INTERSECT");
    last->setOperation = setOperation();
    if (last->setOperation == SetOperation::None) break;
    last->next = selectCore();
    last = last->next.get();
  }
  if (takeWords({"ORDER", "BY"})) first->orderBy = orderBy();
  return first;
}

SetOperation Parser::setOperation() {
  if (takeWord("UNION")) return takeWord("ALL") ? SetOperation::UnionAll : SetOperation::Union;
  if (takeWord("EXCEPT")) return SetOperation::Except;
  return takeWord("INTERSECT") ? SetOperation::Intersect : SetOperation::None;
}

SelectPtr Parser::selectCore() {
  expectWord("SELECT");
  auto select = std::make_unique<Select>();
  select->distinct = takeWord("DISTINCT");
  if (!select->distinct) takeWord("ALL");
  if (takeWord("TOP")) {
    const bool parentheses = takeSymbol("(");
    const Token& token = peek();
    integer();
    select->top = token.literal;
    if (parentheses) expectSymbol(")");
    if (isWord("PERCENT")) unexpected("a number of rows");
  }
  selectList(*select);
  if (takeWord("FROM")) select->sources = sources();
  if (takeWord("WHERE")) select->where = expression();
  if (takeWords({"GROUP", "BY"})) {
    do select->groupBy.push_back(expression());
    while (takeSymbol(","));
  }
  if (takeWord("HAVING")) select->having = expression();
  return select;
}

void Parser::selectList(Select& select) {
  do {
    auto& item = select.items.emplace_back();
    item.value = expression();
    if (isWord("AS") && peek(1).kind == Token::Kind::Text) {
      take();
      item.alias = scan_.literals[take().literal].text;
    } else {
      item.alias = alias();
    }
  } while (takeSymbol(","));
}

/// The name behind an item, with or without AS; empty when there is none.
std::string Parser::alias() {
  if (takeWord("AS")) return name("an alias");
  const Token& token = peek();
  const bool free = token.kind == Token::Kind::Word && !contains(kReserved, token.text);
  return free || token.kind == Token::Kind::QuotedName ? std::string(take().text) : std::string();
}

std::vector<Source> Parser::sources() {
  std::vector<Source> sources;
  sources.push_back(source());
  for (;;) {
    const JoinKind join = takeSymbol(",") ? JoinKind::Comma : joinKind();
    if (join == JoinKind::None) return sources;
    sources.push_back(source());
    sources.back().join = join;
    if (join == JoinKind::Comma || join == JoinKind::Cross) continue;
    expectWord("ON");
    sources.back().condition = expression();
  }
}

JoinKind Parser::joinKind() {
  static constexpr std::pair<std::string_view, JoinKind> kOuter[] = {
      {"LEFT", JoinKind::Left}, {"RIGHT", JoinKind::Right}, {"FULL", JoinKind::Full}};
  if (takeWord("JOIN") || takeWords({"INNER", "JOIN"})) return JoinKind::Inner;
  if (takeWords({"CROSS", "JOIN"})) return JoinKind::Cross;
  for (const auto& [side, kind] : kOuter)
    if (takeWords({side, "OUTER", "JOIN"}) || takeWords({side, "JOIN"})) return kind;
  return JoinKind::None;
}

Source Parser::source() {
  Source source;
  source.offset = peek().offset;
  if (takeSymbol("(")) {
    source.select = selectExpression();
    expectSymbol(")");
  } else {
    source.table = tableName();
    hints();
  }
  source.alias = alias();
  hints();
  if (source.alias.empty() && source.select) unexpected("an alias for the derived table");
  return source;
}

/// WITH (NOLOCK), WITH(NOLOCK) or (NOLOCK): how to lock is left to the database.
void Parser::hints() {
  const std::size_t open = isWord("WITH") ? 1 : 0;
  if (!isSymbol("(", open) || !contains(kHints, peek(open + 1).text)) return;
  position_ += open + 1;
  do {
    if (!contains(kHints, peek().text)) unexpected("a table hint");
    take();
  } while (takeSymbol(","));
  expectSymbol(")");
}

std::vector<OrderItem> Parser::orderBy() {
  std::vector<OrderItem> items;
  do {
    auto& item = items.emplace_back();
    item.value = expression();
    item.descending = takeWord("DESC");
    if (!item.descending) takeWord("ASC");
  } while (takeSymbol(","));
  return items;
}

}  // namespace tsql
