#include "tsql/Resolver.h"
#include "tsql/SmallCatalog.h"

namespace {

using namespace tsql_tests;
using testing::HasSubstr;

tsql::Statement resolved(std::string_view text) {
  static const SmallCatalog catalog;
  const auto scan = tsql::scan(text);
  auto statement = tsql::Parser(scan).statement();
  tsql::Resolver(scan, catalog).resolve(statement);
  return statement;
}

std::string failure(std::string_view text) {
  return errorOf([&] { resolved(text); });
}

TEST(Lexer, TextsShareAKeyWhenOnlyLiteralsDiffer) {
  const auto key = [](std::string_view text) { return tsql::scan(text).key; };
  EXPECT_EQ(key("SELECT ID FROM T WHERE N = 1 AND CODE = 'a'"),
            key("select id\r\nfrom t where n = 22 and code = N'b''c' -- x"));
  for (const auto& [one, other] : inOut(linesOf("tsql/cases/keys_apart.txt"))) EXPECT_NE(key(one), key(other)) << one;
}

TEST(Resolver, WhatItDoesNotKnowIsNamedAndQuoted) {
  for (const auto& [text, expected] : inOut(linesOf("tsql/cases/refuses.txt")))
    EXPECT_THAT(failure(text), HasSubstr(expected)) << text;
}

TEST(Resolver, ResultColumnsHaveSqlServersTypes) {
  const auto types = [](std::string_view text) {
    const auto statement = resolved(text);
    std::string shown;
    for (const auto& column : std::get<tsql::Query>(statement).select->columns)
      shown += (shown.empty() ? "" : " ") + column.name + ":" + typeName(column.type);
    return shown;
  };
  for (const auto& [text, expected] : inOut(linesOf("tsql/cases/types.txt"))) EXPECT_EQ(types(text), expected) << text;
}

TEST(Parser, DeepNestingIsRefused) {
  EXPECT_THAT(failure("SELECT " + std::string(100000, '(') + "1"), HasSubstr("too deeply"));
  std::string nots = "SELECT ID FROM T WHERE ";
  for (int i = 0; i < 100000; ++i) nots += "NOT ";
  EXPECT_THAT(failure(nots + "N = 1"), HasSubstr("too deeply"));
  std::string sums = "SELECT 1";
  for (int i = 0; i < 100000; ++i) sums += "+1";
  EXPECT_THAT(failure(sums), HasSubstr("too many operators"));
}

}  // namespace
