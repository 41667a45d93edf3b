#include <memory>
#include <string>

#include "dati/Cards.h"
#include "dati/WatchedRun.h"
#include "host/commands/Command.h"
#include "host/commands/RunReport.h"
#include "host/environment/Errors.h"
#include "host/environment/Progress.h"
#include "host/environment/Selection.h"
#include "values/Arithmetic.h"
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

/// Raises or lowers the copied amounts through the object's own update, one by one.
int applyPercentage(CLSKORVAL& budget, const dati::WatchedRun& run, const Variant& percentage) {
  const Variant factor =
      values::add(1, values::divide(values::toDecimal(percentage), values::Decimal::FromScaled(100)));
  int changed = 0;
  for (const auto& [key, amount] : run.after().amounts()) {
    if (amount.isNothing()) continue;
    const auto& old = run.before().amount(key);
    if (!old.isNothing() && values::compare(old, amount) == 0) continue;
    dati::writeCardValue(budget, key.card, budget.TipoDettaglioDestinazione, key.period, bdgValoreImporto,
                         values::toDecimal(values::multiply(amount, factor)).rounded(2));
    ++changed;
  }
  return changed;
}

struct DuplicateOptions {
  bool dryRun = false;
  std::string percentage;
};

void duplicate(Environment& environment, const DuplicateOptions& options) {
  requireGrid(environment);
  if (options.dryRun && !options.percentage.empty())
    throw UsageError("--percent changes what a run has written; it does not go with --dry-run");
  auto& budget = environment.budget();
  completeDestination(budget);
  const dati::DetailScope scope{{budget.CodiceDitta, budget.TipoBudget, budget.BdgDestinazioneSottoTipo,
                                 budget.BdgDestinazioneAnnoEsercizio, budget.BdgDestinazioneProgressivoEsercizio},
                                budget.TipoDettaglioDestinazione};
  dati::WatchedRun run(budget, environment.connection(), scope,
                       options.dryRun ? dati::RunMode::Trial : dati::RunMode::Write);
  const Progress progress(budget);
  run(&CLSKORVAL::BdgDupSchede_Duplicazione);
  const auto changes = run.changes();
  if (options.dryRun) return environment.show(tableOf(changes));
  const int changed = options.percentage.empty() ? 0 : applyPercentage(budget, run, Variant(options.percentage));
  environment.show({{{"NUOVE", "New cards", true},
                     {"IMPORTI", "Amounts written", true},
                     {"SCOSTATI", "Amounts changed by --percent", true}},
                    {{run.newCards(), changes.size(), changed}},
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
          "destination cards have; --IsDuplicaScadenzeCashFlow makes their due dates.",
          {{"--dry-run", "show the amounts it would write, and write nothing", &options->dryRun},
           {"--percent", "deviation applied to the copied amounts afterwards", &options->percentage}},
          [options](Environment& environment) { duplicate(environment, *options); }};
}

}  // namespace bukorval::host
