#pragma once

#include "support/Test.h"
#include "tsql/Names.h"
#include "tsql/Parser.h"

namespace tsql_tests {

/// Cards with an identity, and their details.
class SmallCatalog : public tsql::Catalog {
 public:
  const tsql::Table* find(std::string_view name) const override {
    for (const auto& table : tables_)
      if (tsql::sameName(table.name, name)) return &table;
    return nullptr;
  }

 private:
  static tsql::Table made(std::string_view create) {
    auto change = std::get<tsql::SchemaChange>(tsql::Parser(tsql::scan(create)).statement());
    tsql::Table table{change.name, {}};
    for (auto& definition : change.columns) table.columns.push_back(definition.column);
    return table;
  }
  const std::vector<tsql::Table> tables_ = {
      made("CREATE TABLE T (ID DECIMAL(10,0) IDENTITY NOT NULL, CODE NCHAR(4), AMOUNT DECIMAL(15,2), QTY DECIMAL(14,3),"
           " DAY DATETIME, N SMALLINT)"),
      made("CREATE TABLE D (D_ID DECIMAL(10,0), D_T DECIMAL(10,0), D_VALUE DECIMAL(15,2))")};
};

}  // namespace tsql_tests
