#pragma once

#include <sqlite3.h>

#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "FileDatabase.h"
#include "sqlite/Binder.h"
#include "sqlite/Handle.h"
#include "sqlite/SchemaCatalog.h"
#include "sqlite/emitter/Translate.h"

namespace bench {

/// Steps recorded texts on a handle of its own: compiled once a shape, values bound, every column read and dropped.
class Replay {
 public:
  Replay(sqlite3* database, std::vector<std::string> texts) : database_(database), texts_(std::move(texts)) {
    const sqlite::SchemaCatalog catalog(database);
    for (const auto& text : texts_) calls_.push_back(callFor(text, catalog));
  }

  void run() {
    for (const auto& call : calls_) {
      if (!call.shape) {
        sqlite::run(database_, call.command);
        continue;
      }
      auto* statement = call.shape->statement.get();
      sqlite::bindLiterals(statement, call.shape->translation.main.bindings, call.literals);
      stepAll(database_, statement);
    }
  }

 private:
  struct Shape {
    sqlite::Translation translation;
    sqlite::Prepared statement;
  };
  struct Call {
    Shape* shape = nullptr;
    const char* command = "";
    std::vector<tsql::Literal> literals;
  };

  Call callFor(const std::string& text, const sqlite::SchemaCatalog& catalog) {
    using sqlite::Translation;
    if (text == "BEGIN") return {nullptr, "BEGIN IMMEDIATE", {}};
    if (text == "COMMIT") return {nullptr, "COMMIT", {}};
    auto scan = tsql::scan(text);
    auto& shape = shapes_[scan.key];
    if (!shape) {
      shape = std::make_unique<Shape>();
      shape->translation = sqlite::translate(scan, catalog, "replay_");
      if (!shape->translation.setup.empty()) throw std::runtime_error("a staged text: " + text);
      // The connection itself answers for the last identity; the engine has nothing to do.
      if (shape->translation.kind != Translation::Kind::Identity)
        shape->statement = sqlite::prepare(database_, shape->translation.main.sql);
    }
    if (!shape->statement) return {nullptr, "", {}};
    return {shape.get(), "", std::move(scan.literals)};
  }

  sqlite3* database_;
  std::vector<std::string> texts_;
  std::map<std::string, std::unique_ptr<Shape>> shapes_;
  std::vector<Call> calls_;
};

}  // namespace bench
