#include "dati/import/Batches.h"

#include <cstddef>
#include <iostream>
#include <memory>
#include <string>

#include "dati/import/Import.h"
#include "host/commands/Command.h"
#include "language/Language.h"

namespace bukorval::host {
namespace {

struct BatchesOptions {
  std::string remove;
  bool yes = false;
};

void showBatches(const Environment& environment, const dati::Batches& batches) {
  Table table{{{"NOME", "Name"},
               {"TIPO", "Kind"},
               {"RIGHE", "Rows", true},
               {"REGISTRAZIONI", "Registrations", true},
               {"DATA", "When"}},
              {},
              {}};
  for (const auto& batch : batches.all())
    table.rows.push_back({batch.name, batch.kind, batch.rows, batch.registrations, batch.when});
  environment.show(table);
}

void removeBatch(const Environment& environment, dati::Batches& batches, const BatchesOptions& options) {
  const auto registrations =
      dati::counted(static_cast<std::size_t>(batches.registrationsOf(options.remove)), "registration");
  environment.confirm(tr("Remove the import {} with its {}?", options.remove, registrations), options.yes);
  batches.remove(options.remove);
  std::cout << tr("Removed {} with {}", options.remove, registrations) << '\n';
}

void run(Environment& environment, const BatchesOptions& options) {
  auto& connection = *environment.connection();
  dati::Batches batches(connection, environment.session().CodiceDitta());
  if (options.remove.empty()) return showBatches(environment, batches);
  removeBatch(environment, batches, options);
}

}  // namespace

Command batchesCommand() {
  const auto options = std::make_shared<BatchesOptions>();
  return {"batches",
          "List the imports of movements that have a name, or remove one whole",
          "  bukorval batches -d acme.db\n"
          "  bukorval batches --remove march --yes -d acme.db\n"
          "`import --batch NAME` gives the name. Asks on a terminal before it removes; elsewhere --yes is needed.",
          {{.flags = "--remove",
            .help = "name of the import whose registrations are deleted",
            .target = &options->remove,
            .valueName = "NAME"},
           {"--yes", "do not ask", &options->yes}},
          [options](Environment& environment) { run(environment, *options); }};
}

}  // namespace bukorval::host
