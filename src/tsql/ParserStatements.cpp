#include <cassert>

#include "tsql/Parser.h"
#include "values/Errore.h"

namespace tsql {

Statement Parser::statement() {
  while (takeSymbol(";")) {
  }
  if (peek().kind == Token::Kind::End) throw values::Errore("Command text was not set for the command object");
  Statement parsed = body();
  end();
  assert(depth_ == 0);
  return parsed;
}

void Parser::end() {
  while (takeSymbol(";")) {
  }
  if (peek().kind == Token::Kind::End) return;
  try {
    unexpected("the end of the text");
  } catch (const values::Errore& error) {
    throw values::Errore(std::string(error.what()) + "; only one statement a call");
  }
}

Statement Parser::body() {
  if (isWord("SELECT") || isWord("WITH") || isSymbol("(")) return query();
  if (isWord("CREATE")) return create();
  if (isWord("DROP")) return drop();
  if (isWord("ALTER")) return alter();
  if (isWord("TRUNCATE")) return truncate();
  if (isWord("IF")) return conditional();
  return change();
}

Change Parser::change() {
  if (isWord("INSERT")) return insert();
  if (isWord("UPDATE")) return update();
  if (isWord("DELETE")) return erase();
  unexpected("a statement");
}

Change Parser::conditional() {
  expectWord("IF");
  const bool negated = takeWord("NOT");
  expectWord("EXISTS");
  expectSymbol("(");
  SelectPtr condition = selectExpression();
  expectSymbol(")");
  const bool block = takeWord("BEGIN");
  Change guarded = change();
  if (block) {
    while (takeSymbol(";")) {
    }
    expectWord("END");
  }
  guarded.condition = std::move(condition);
  guarded.negated = negated;
  return guarded;
}

Change Parser::insert() {
  Change change;
  change.kind = Change::Kind::Insert;
  change.offset = peek().offset;
  expectWord("INSERT");
  takeWord("INTO");
  change.table = tableName();
  if (isSymbol("(")) change.columns = nameList();
  if (!takeWord("VALUES")) {
    change.select = selectExpression();
    return change;
  }
  do {
    expectSymbol("(");
    auto& row = change.rows.emplace_back();
    do row.push_back(expression());
    while (takeSymbol(","));
    expectSymbol(")");
  } while (takeSymbol(","));
  return change;
}

Change Parser::update() {
  Change change;
  change.kind = Change::Kind::Update;
  change.offset = peek().offset;
  expectWord("UPDATE");
  change.table = tableName();
  hints();
  expectWord("SET");
  do {
    std::string column = name("a column name");
    while (takeSymbol(".")) column = name("a column name");
    expectSymbol("=");
    change.assignments.push_back({std::move(column), expression()});
  } while (takeSymbol(","));
  if (takeWord("FROM")) change.sources = sources();
  if (takeWord("WHERE")) change.where = expression();
  return change;
}

Change Parser::erase() {
  Change change;
  change.kind = Change::Kind::Delete;
  change.offset = peek().offset;
  expectWord("DELETE");
  takeWord("FROM");
  change.table = tableName();
  hints();
  if (takeWord("WHERE")) change.where = expression();
  return change;
}

}  // namespace tsql
