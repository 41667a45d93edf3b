#include "dati/Raise.h"

#include <memory>
#include <set>
#include <string>

#include "dati/Failure.h"
#include "dati/WatchedRun.h"
#include "host/commands/Command.h"
#include "host/commands/DetailKind.h"
#include "host/commands/RunReport.h"
#include "host/environment/Arguments.h"
#include "host/environment/Selection.h"
#include "language/Language.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

struct RaiseOptions {
  std::string percentage, kind = "budget", measure = "amount";
  bool dryRun = false;
};

void raise(Environment& environment, const RaiseOptions& options) {
  requireBudget(environment);
  auto& budget = environment.budget();
  const auto percentage = parsePercentage(options.percentage, environment.session().SeparatoreDecimale());
  const auto kind = parsePeriodKind(budget, options.kind);
  const auto& measure = parseMeasure(options.measure);
  auto transaction = environment.transaction();
  if (!options.dryRun) requireWritable(environment, budgetScelto(budget));
  dati::WatchedRun run(budget, transaction, {budgetScelto(budget), kind, bdgPdcCoGe, &measure});
  const auto cards = dati::selectedCards(budget, run.connection());
  if (cards.empty()) throw dati::Refused(tr("There is no card in this selection"));
  std::set<dati::DetailSnapshot::Key> cells;
  for (const auto& [key, amount] : run.before().amounts())
    if (cards.contains(key.card)) cells.insert(key);
  int raised = 0;
  run([&](CLSKORVAL& object) {
    raised = dati::raiseAmounts(object, run.before(), cells, kind, measure, dati::raisingFactor(percentage));
  });
  transaction.end(options.dryRun ? dati::RunMode::Trial : dati::RunMode::Write);
  auto changes = tableOf(run.changes(), measure.decimals);
  for (auto& column : changes.columns) column.total = column.decimals > 0;
  changes.addTotals();
  if (options.dryRun) return environment.show(changes);
  environment.show(
      {{{"SCHEDE", "Cards", true},
        measure.kind == bdgValoreImporto ? Column{"IMPORTI", "Amounts", true} : Column{"QUANTITA", "Quantities", true},
        {"CAMBIATI", "Changed", true},
        {"PRIMA", "Before", true, measure.decimals},
        {"DOPO", "After", true, measure.decimals}},
       {{cards.size(), raised, changes.rows.size(), changes.totals[changes.columns.size() - 2], changes.totals.back()}},
       {}});
}

}  // namespace

Command raiseCommand() {
  const auto options = std::make_shared<RaiseOptions>();
  return {"raise",
          "Raise or lower the amounts or quantities of a selection of cards by a percentage",
          "  bukorval raise 2,5 -t 4 -s 01 -y 2025 -k 0 -b 1 --dry-run -d demo.db\n"
          "  bukorval raise -10 -t 4 -s 01 -y 2025 --DaScheda FIERE --AScheda PUBBLIC --kind forecast1 -d demo.db\n"
          "Every amount is rounded to the cent, every quantity to three decimals. One transaction: when one of them no "
          "longer fits, all stay as they were.",
          {{"PERCENT", "5 or -2,5", &options->percentage, true},
           {.flags = "--kind",
            .help = "budget, actual, forecastN or a number",
            .target = &options->kind,
            .showDefault = true},
           {.flags = "--measure", .help = "amount, qty1 or qty2", .target = &options->measure, .showDefault = true},
           {"--dry-run", "show the amounts it would write, and write nothing", &options->dryRun}},
          [options](Environment& environment) { raise(environment, *options); },
          Writes::Cards};
}

}  // namespace bukorval::host
