#include <algorithm>
#include <iterator>

#include "tsql/Names.h"
#include "tsql/Parser.h"

namespace tsql {

SchemaChange Parser::create() {
  expectWord("CREATE");
  if (takeWord("TABLE")) return createTable();
  const bool unique = takeWord("UNIQUE");
  if (!takeWord("NONCLUSTERED")) takeWord("CLUSTERED");
  if (takeWord("INDEX")) return createIndex(unique);
  unexpected("TABLE or INDEX");
}

SchemaChange Parser::createTable() {
  SchemaChange change;
  change.kind = SchemaChange::Kind::CreateTable;
  change.name = tableName();
  expectSymbol("(");
  do {
    if (isWord("CONSTRAINT") || isWord("PRIMARY") || isWord("UNIQUE"))
      change.constraints.push_back(constraint());
    else
      change.columns.push_back(columnDefinition());
  } while (takeSymbol(","));
  expectSymbol(")");
  return change;
}

TableConstraint Parser::constraint() {
  if (takeWord("CONSTRAINT")) name("the name of a constraint");
  TableConstraint constraint;
  constraint.primaryKey = takeWords({"PRIMARY", "KEY"});
  if (!constraint.primaryKey && !takeWord("UNIQUE")) unexpected("PRIMARY KEY or UNIQUE");
  if (!takeWord("NONCLUSTERED")) takeWord("CLUSTERED");
  constraint.columns = nameList();
  return constraint;
}

ColumnDefinition Parser::columnDefinition() {
  ColumnDefinition definition;
  definition.column.name = name("a column name");
  definition.column.type = type();
  for (;;) {
    if (takeWord("IDENTITY")) {
      definition.column.identity = true;
      if (takeSymbol("(")) {
        if (integer() != "1") unexpected("IDENTITY(1,1)");
        expectSymbol(",");
        if (integer() != "1") unexpected("IDENTITY(1,1)");
        expectSymbol(")");
      }
    } else if (takeWords({"NOT", "NULL"})) {
      definition.column.type.nullable = false;
    } else if (takeWord("NULL")) {
      definition.column.type.nullable = true;
    } else if (takeWord("CONSTRAINT")) {
      name("the name of a constraint");
    } else if (takeWord("DEFAULT")) {
      definition.defaultValue = defaultValue();
    } else if (takeWords({"PRIMARY", "KEY"})) {
      definition.primaryKey = true;
    } else if (takeWord("UNIQUE")) {
      definition.unique = true;
    } else {
      return definition;
    }
  }
}

DefaultValue Parser::defaultValue() {
  const bool parentheses = takeSymbol("(");
  DefaultValue value;
  if (!takeWord("NULL")) {
    const bool negative = takeSymbol("-");
    const Token& token = peek();
    if (token.kind != Token::Kind::Number && token.kind != Token::Kind::Text) unexpected("a literal default");
    const Literal& literal = scan_.literals[take().literal];
    if (literal.kind == Literal::Kind::Text) {
      value = {DefaultValue::Kind::Text, literal.text};
    } else if (literal.kind == Literal::Kind::Integer) {
      value = {DefaultValue::Kind::Integer, (negative ? "-" : "") + literal.text};
    } else {
      unexpected("a default that is a text or a whole number");
    }
  }
  if (parentheses) expectSymbol(")");
  return value;
}

std::vector<std::string> Parser::nameList() {
  std::vector<std::string> names;
  expectSymbol("(");
  do {
    names.push_back(name("a column name"));
    if (!takeWord("ASC")) takeWord("DESC");
  } while (takeSymbol(","));
  expectSymbol(")");
  return names;
}

SchemaChange Parser::createIndex(bool unique) {
  SchemaChange change;
  change.kind = SchemaChange::Kind::CreateIndex;
  change.unique = unique;
  change.name = name("the name of an index");
  expectWord("ON");
  change.table = tableName();
  expectSymbol("(");
  do {
    auto& column = change.indexColumns.emplace_back();
    column.name = name("a column name");
    column.descending = takeWord("DESC");
    if (!column.descending) takeWord("ASC");
  } while (takeSymbol(","));
  expectSymbol(")");
  if (takeWord("INCLUDE")) change.includedColumns = nameList();
  if (takeWord("WHERE")) {
    do change.indexFilters.push_back(indexFilter());
    while (takeWord("AND"));
  }
  return change;
}

IndexFilter Parser::indexFilter() {
  IndexFilter filter{name("a column name"), {}, {}};
  constexpr std::string_view kComparisons[] = {"=", "<>", "<=", ">=", "<", ">"};
  const auto* comparison = std::ranges::find_if(kComparisons, [&](auto symbol) { return takeSymbol(symbol); });
  if (comparison == std::end(kComparisons)) unexpected("a comparison");
  filter.comparison = *comparison;
  const auto value = defaultValue();
  if (value.kind != DefaultValue::Kind::Integer) unexpected("a whole number");
  filter.number = value.text;
  return filter;
}

SchemaChange Parser::drop() {
  expectWord("DROP");
  SchemaChange change;
  const bool table = takeWord("TABLE");
  if (!table) expectWord("INDEX");
  change.kind = table ? SchemaChange::Kind::DropTable : SchemaChange::Kind::DropIndex;
  change.ifExists = takeWords({"IF", "EXISTS"});
  change.name = tableName();
  if (!table && takeWord("ON")) change.table = tableName();
  return change;
}

SchemaChange Parser::alter() {
  expectWord("ALTER");
  expectWord("TABLE");
  SchemaChange change;
  change.kind = SchemaChange::Kind::AddColumn;
  change.table = tableName();
  expectWord("ADD");
  change.columns.push_back(columnDefinition());
  return change;
}

SchemaChange Parser::truncate() {
  expectWord("TRUNCATE");
  expectWord("TABLE");
  SchemaChange change;
  change.kind = SchemaChange::Kind::Truncate;
  change.table = tableName();
  return change;
}

Type Parser::type() {
  std::string text = upperName(name("a type"));
  if (takeSymbol("(")) {
    text += "(" + (takeWord("MAX") ? std::string("MAX") : integer());
    if (takeSymbol(",")) text += "," + integer();
    expectSymbol(")");
    text += ")";
  }
  return parseType(text);
}

}  // namespace tsql
