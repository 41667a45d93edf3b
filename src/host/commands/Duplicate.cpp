#include <memory>
#include <optional>
#include <string>

#include "dati/CopyDeviation.h"
#include "dati/WatchedRun.h"
#include "host/commands/Command.h"
#include "host/commands/RunReport.h"
#include "host/environment/Arguments.h"
#include "host/environment/Errors.h"
#include "host/environment/Progress.h"
#include "host/environment/Selection.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

using values::Variant;

/// What is not said of the destination is the source's.
void completeDestination(CLSKORVAL& budget) {
  const auto complete = [](Variant& destination, const Variant& source) {
    if (values::isBlank(destination)) destination = source;
  };
  complete(budget.BdgDestinazioneSottoTipo, budget.SottoTipoBudget);
  complete(budget.BdgDestinazioneAnnoEsercizio, budget.AnnoEsercizio);
  complete(budget.BdgDestinazioneProgressivoEsercizio, budget.ProgressivoEsercizio);
  complete(budget.BdgDestinazioneCodiceSede, budget.CodiceSede);
}

struct DuplicateOptions {
  bool dryRun = false;
  std::string percentage;
};

void duplicate(Environment& environment, const DuplicateOptions& options) {
  requireGrid(environment);
  std::optional<values::Decimal> percentage;
  if (!options.percentage.empty())
    percentage = parsePercentage(options.percentage, environment.session().SeparatoreDecimale());
  auto& budget = environment.budget();
  completeDestination(budget);
  auto transaction = environment.transaction();
  if (!options.dryRun) requireWritable(environment, budgetDestinazione(budget));
  completeCardRange(environment);
  dati::WatchedRun run(budget, transaction, {budgetDestinazione(budget), budget.TipoDettaglioDestinazione});
  const Progress progress(environment);
  dati::CopyDeviation deviation(budget, run);
  dati::CopyDeviation::Counts deviating;
  run([&](CLSKORVAL& object) { object.BdgDupSchede_Duplicazione(); });
  if (percentage) run([&](CLSKORVAL&) { deviating = deviation.apply(*percentage); });
  transaction.end(options.dryRun ? dati::RunMode::Trial : dati::RunMode::Write);
  const auto& changes = run.changes();
  if (options.dryRun) return environment.show(tableOf(changes));
  environment.show({{{"NUOVE", "New cards", true},
                     {"IMPORTI", "Amounts changed", true},
                     {"SCOSTATI", "Amounts by --percent", true},
                     {"SCADENZE", "Due dates by --percent", true}},
                    {{run.newCards(), changes.size(), deviating.amounts, deviating.dueDates}},
                    {}});
}

}  // namespace

Command duplicateCommand() {
  const auto options = std::make_shared<DuplicateOptions>();
  return {"duplicate",
          "Copy cards into another year, subtype or site",
          "  bukorval duplicate -d demo.db -t 4 -s 01 -y 2025 --BdgTipoScheda 0 --CodiceSede 1 \\\n"
          "      --BdgDestinazioneAnnoEsercizio 2026 --BdgDestinazioneProgressivoEsercizio 1 --percent 5\n"
          "What is not said of the destination is the source's. --IsSovrascriviEsistenti replaces values that\n"
          "destination cards have; --IsDuplicaScadenzeCashFlow makes their due dates. All of it is one transaction.",
          {{"--dry-run", "show the amounts it would write, and write nothing", &options->dryRun},
           {"--percent", "deviation of the copied amounts and due dates, 5 or -2,5", &options->percentage}},
          [options](Environment& environment) { duplicate(environment, *options); },
          Writes::Cards};
}

}  // namespace bukorval::host
