#include <iostream>
#include <memory>
#include <string>

#include "host/commands/Command.h"
#include "host/environment/DatabaseFiles.h"
#include "language/Language.h"
#include "sqlite/Upkeep.h"

namespace bukorval::host {
namespace {

void backUp(const Environment& environment, const std::string& file) {
  const auto connectionString = environment.connectionString();
  requireEmbedded(connectionString, "backup");
  makeDatabase(file, [&](const std::string& workName) { sqlite::copyDatabase(connectionString, workName); });
  std::cout << tr("Backed up into {}", file) << '\n';
}

}  // namespace

Command backupCommand() {
  const auto file = std::make_shared<std::string>();
  return {
      "backup",
      "Copy the database into a new file while others may work on it",
      "  bukorval backup monday.db -d demo.db\n"
      "The copy is the database as the last finished run left it; `bukorval check -d monday.db` looks whether it is "
      "whole.",
      {{.flags = "FILE", .help = "the file to make; it must not exist", .target = file.get(), .required = true}},
      [file](Environment& environment) { backUp(environment, *file); }};
}

}  // namespace bukorval::host
