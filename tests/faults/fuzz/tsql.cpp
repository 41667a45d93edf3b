// Any text is translated or refused, and what it is translated to the engine can read.
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <string_view>

#include "schema/Schema.h"
#include "sqlite/Handle.h"
#include "sqlite/SchemaCatalog.h"
#include "sqlite/TemporaryDatabase.h"
#include "sqlite/emitter/Translate.h"
#include "sqlite/functions/Functions.h"
#include "values/Errore.h"

namespace {

/// A file with the system's tables, and a handle on it that runs nothing but the setup of stages.
struct Tables {
  Tables() {
    schema::create(*file.open());
    sqlite3* raw = nullptr;
    sqlite3_open_v2(file.path().c_str(), &raw, SQLITE_OPEN_READWRITE, nullptr);
    database.reset(raw);
    sqlite::registerFunctions(raw);
    catalog.emplace(raw);
  }
  sqlite_tests::TemporaryDatabase file;
  sqlite::Database database;
  std::optional<sqlite::SchemaCatalog> catalog;
};

void requireReadable(sqlite3* database, const engine::StepText& step, bool run) {
  try {
    const auto statement = sqlite::prepare(database, step.sql);
    if (run) sqlite::stepToEnd(database, statement.get());
  } catch (const values::Errore& error) {
    const std::string_view why = error.what();
    for (const auto* own : {"syntax error", "unrecognized token", "incomplete input", "no such function"}) {
      if (why.find(own) == why.npos) continue;
      std::cerr << why << ": " << step.sql << '\n';
      std::abort();
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Tables tables;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  try {
    const auto scan = tsql::scan(text);
    const auto translation = sqlite::translate(scan, *tables.catalog, "s_");
    auto* database = tables.database.get();
    for (const auto& step : translation.setup) requireReadable(database, step, true);
    for (const auto& step : translation.prepare) requireReadable(database, step, false);
    if (!translation.main.sql.empty()) requireReadable(database, translation.main, false);
    for (const auto& step : translation.cleanup) requireReadable(database, step, false);
    for (const auto& step : translation.teardown) requireReadable(database, step, true);
  } catch (const values::Errore&) {
  }
  return 0;
}
