#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

#include "dati/Failure.h"
#include "host/commands/Command.h"
#include "host/environment/DatabaseFiles.h"
#include "language/Language.h"
#include "sqlite/NewFile.h"
#include "sqlite/Upkeep.h"
#include "values/FileName.h"

namespace bukorval::host {
namespace {

struct RestoreOptions {
  std::string file;
  bool yes = false;
};

void restore(const Environment& environment, const RestoreOptions& options) {
  const auto& database = environment.options.database;
  const bool missing = !database.empty() && !sqlite::isTaken(database);
  const auto connectionString = missing ? sqliteConnectionString(database) : environment.connectionString();
  requireEmbedded(connectionString, "restore");
  if (!std::filesystem::exists(values::pathOf(options.file)))
    throw dati::Refused(tr("There is no file {}", options.file));
  const auto from = sqliteConnectionString(options.file) + ";Mode=Read";
  if (missing) {
    makeDatabase(database, [&](const std::string& workName) { sqlite::copyDatabase(from, workName); });
  } else {
    environment.confirm(tr("Replace everything in the database by {}?", options.file), options.yes);
    sqlite::replaceDatabase(connectionString, from);
  }
  std::cout << tr("Restored from {}", options.file) << '\n';
}

}  // namespace

Command restoreCommand() {
  const auto options = std::make_shared<RestoreOptions>();
  return {"restore",
          "Replace the database by a copy that `bukorval backup` made",
          "  bukorval restore monday.db --yes -d demo.db\n"
          "Everything or nothing: when it fails the database is as it was. Refused while another run has it open.\n"
          "Asks on a terminal; elsewhere --yes is needed.",
          {{.flags = "FILE", .help = "the copy", .target = &options->file, .required = true},
           {"--yes", "do not ask", &options->yes}},
          [options](Environment& environment) { restore(environment, *options); }};
}

}  // namespace bukorval::host
