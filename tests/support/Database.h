#pragma once

#include "schema/Schema.h"
#include "sqlite/Provider.h"
#include "support/Test.h"

namespace testing_support {

/// An empty database in memory with every table.
inline ado::ConnectionPtr memoryDatabase() {
  sqlite::registerSqlite();
  auto db = ado::createConnection();
  db->ConnectionString = "Provider=SQLite;Data Source=:memory:";
  db->Open();
  schema::create(*db);
  return db;
}

/// The rows of a query as text, cells joined by blanks.
inline std::vector<std::string> list(ado::Connection& db, const std::string& sql) {
  std::vector<std::string> texts;
  const auto set = db.Execute(sql);
  for (; !set->Eof(); set->MoveNext()) {
    std::string text;
    for (std::size_t i = 0; i < set->Fields().Count(); ++i)
      text += (i == 0 ? "" : " ") + values::toPlainText(set->Fields().Item(i).Value());
    texts.push_back(text);
  }
  return texts;
}

/// The first row of a query, "none" without one.
inline std::string one(ado::Connection& db, const std::string& sql) {
  const auto texts = list(db, sql);
  return texts.empty() ? "none" : texts.front();
}

/// Inserts one row: names and SQL values, "COLUMN=value, …". A column named again takes the later value.
/// @return the identity that the row got.
inline std::string insert(ado::Connection& db, const std::string& table, const std::string& columns) {
  std::map<std::string, std::string> cells;
  for (std::size_t at = 0; at < columns.size();) {
    const auto end = std::min(columns.find(", ", at), columns.size());
    const auto equal = columns.find('=', at);
    cells[columns.substr(at, equal - at)] = columns.substr(equal + 1, end - equal - 1);
    at = end + 2;
  }
  std::string names, texts;
  for (const auto& [name, text] : cells) {
    names += (names.empty() ? "" : ", ") + name;
    texts += (texts.empty() ? "" : ", ") + text;
  }
  db.Execute("INSERT INTO " + table + " (" + names + ") VALUES (" + texts + ")");
  return one(db, "SELECT @@IDENTITY");
}

}  // namespace testing_support
