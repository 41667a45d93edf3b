#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "dati/Cards.h"
#include "dati/Failure.h"
#include "dati/Reconciliation.h"
#include "dati/WatchedRun.h"
#include "host/commands/CardRun.h"
#include "host/commands/Command.h"
#include "host/commands/ReconciliationReport.h"
#include "host/commands/RunReport.h"
#include "host/environment/Progress.h"
#include "host/environment/Selection.h"
#include "language/Language.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

/// The sites of a budget kept per site: those given, the one given, or all that have cards.
void completeSites(Environment& environment) {
  auto& budget = environment.budget();
  bool perSite = false;
  budget.GetGestioneSede(budget.TipoBudget, budget.SottoTipoBudget, perSite);
  environment.requireSuccess();
  if (!perSite || (budget.ElencoSedi && budget.ElencoSedi->Count() > 0)) return;
  if (values::isBlank(budget.CodiceSede)) {
    budget.ElencoSedi = dati::sitesWithCards(*environment.connection(), budgetScelto(budget));
  } else {
    budget.ElencoSedi = std::make_shared<ado::Dictionary>();
    budget.ElencoSedi->Add(budget.CodiceSede, budget.CodiceSede);
  }
}

struct CardsOptions {
  bool dryRun = false, yes = false, strict = false;
};

/// Further months than those with movements would become 0, and a forecast takes a 0 as the actual value, so they are
/// written only after a question.
void askForMonthsBeyond(const Environment& environment, const CardRunDates& dates, const CardsOptions& options) {
  if (!dates.beyond) return;
  tellDates(environment, dates);
  if (!options.dryRun)
    environment.confirm(tr("The months after {} have no movements: they become 0 and replace the forecast. Go on?",
                           values::toPlainText(dates.closed)),
                        options.yes);
}

/// What a month-end run means when the command line does not say otherwise: the real movements of the budget's own
/// year, into the actuals, for every site. Inside the transaction: other runs write cards and movements.
/// @param asked  the dates that a question was about; nobody is asked while others wait.
void completeInput(Environment& environment, const CardRunDates& asked, const CardsOptions& options) {
  completeCardRange(environment);
  completeSites(environment);
  const auto dates = cardRunDates(environment);
  const bool more = dates.beyond && (!asked.beyond || dates.closed < asked.closed);
  if (more && !options.dryRun && !options.yes)
    throw dati::Refused(tr("Another run has taken movements away meanwhile: nothing was changed"));
  if (!asked.beyond) tellDates(environment, dates);
  takeDates(environment.budget(), dates);
}

/// Which part of the movements a run is about, by the command line.
dati::CardReconciler::Narrowing narrowingOf(const Environment& environment) {
  const auto& given = environment.options.properties;
  const auto either = [&](const char* a, const char* b) { return given.contains(a) || given.contains(b); };
  return {either("CodiceSede", "ElencoSedi"), either("DaScheda", "AScheda")};
}

/// The runs of the object, over both card kinds or the one that is selected.
/// @param onCard  for each card, when it has been done.
void elaborate(Environment& environment, dati::WatchedRun& run, dati::CardReconciler& reconciler,
               const std::function<void(const ado::Recordset&)>& onCard) {
  auto& budget = environment.budget();
  std::vector<int> cardKinds = {0, 1};
  const auto chosen = budget.BdgTipoScheda;
  if (!values::isBlank(chosen)) cardKinds = {values::toInt32(chosen)};
  const Progress progress(environment);
  // The cards of each site pass by as they are elaborated.
  const auto step = budget.eventi.StepProcess;
  budget.eventi.StepProcess = [&](values::Variant& done) {
    onCard(*budget.RstBdgSchedeDaElaborare);
    if (step) step(done);
  };
  const auto ranges = cardRunRanges(budget);
  run([&](CLSKORVAL& object) {
    for (const int cardKind : cardKinds) {
      for (const auto& [from, to] : ranges) {
        object.BdgTipoScheda = cardKind;
        object.DaData = from;
        object.AData = to;
        reconciler.beginRun();
        object.BdgElaSchede_Elaborazione();
        dati::requireSuccess(object);
      }
    }
  });
}

void elaborateCards(Environment& environment, const CardsOptions& options) {
  requireBudget(environment);
  if (!options.dryRun) requireWritable(environment, budgetScelto(environment.budget()));
  completeCardRun(environment);
  const auto asked = cardRunDates(environment);
  askForMonthsBeyond(environment, asked, options);
  auto& budget = environment.budget();
  auto transaction = environment.transaction();
  if (!options.dryRun) requireWritable(environment, budgetScelto(budget));
  completeInput(environment, asked, options);
  dati::WatchedRun run(budget, transaction, {budgetScelto(budget), budget.TipoDettaglioDestinazione});
  dati::CardReconciler reconciler(budget, run.connection(), narrowingOf(environment));
  SiteSummary summary;
  elaborate(environment, run, reconciler, [&](const ado::Recordset& cards) {
    reconciler.addCard(cards);
    summary.addCard(cards["BU65_CODICE_CG31"].Value());
  });
  const auto reconciliation = reconciler.reconcile(run);
  const bool refused = options.strict && reconciliation.hasRest();
  const auto mode = options.dryRun || refused ? dati::RunMode::Trial : dati::RunMode::Write;
  transaction.end(mode);
  const auto& changes = run.changes();
  summary.addChanges(changes);
  environment.show({{},
                    {{"Cards", mode == dati::RunMode::Trial ? tableOf(changes) : summary.table()},
                     {"Landed nowhere", unlandedTable(reconciliation)},
                     {"Reconciliation", totalsTable(reconciliation)}}});
  if (refused)
    throw dati::Refused(tr("Not every movement landed on a card, to the cent: with --strict nothing was written"));
}

}  // namespace

Command elaborateCardsCommand() {
  const auto options = std::make_shared<CardsOptions>();
  return {"elaborate-cards",
          "Recompute the cards' values from accounting movements",
          "  bukorval elaborate-cards -d demo.db -t 4 -s 01 -y 2025 --dry-run\n"
          "Takes every site and both card kinds, the budget's own year, consolidated movements and those to be\n"
          "consolidated, unless options say otherwise:\n"
          "--CodiceSede, --BdgTipoScheda, --DaData, --AData, --TipoDataMovimenti 1 (competence),\n"
          "--DaScheda, --AScheda, --IsApplicaPercentuali, --TipoDettaglioDestinazione. One transaction in all.\n"
          "--MovimentiConsolidati, --MovimentiDaConsolidare and --MovimentiPrevisionali (forecast movements) name the\n"
          "kinds that count instead of those two; --TipoMovimenti is a condition in SQL instead of the three.\n"
          "Without --AData the run ends with the month of the latest movement; later months keep what they hold.\n"
          "Then shows the movements that landed on no card, with the reason, and totals that add up to the cent.",
          {{"--dry-run", "show the differences it would write, and write nothing", &options->dryRun},
           {"--strict", "write nothing and leave with exit code 1 when a movement of the range lands nowhere",
            &options->strict},
           {"--yes", "do not ask before months without movements become 0", &options->yes}},
          [options](Environment& environment) { elaborateCards(environment, *options); },
          Writes::Cards};
}

}  // namespace bukorval::host
