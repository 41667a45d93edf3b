#include <iterator>
#include <memory>
#include <vector>

#include "dati/Cards.h"
#include "dati/WatchedRun.h"
#include "host/commands/Command.h"
#include "host/commands/RunReport.h"
#include "host/environment/Progress.h"
#include "host/environment/Selection.h"
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

/// What a month-end run means when the command line does not say otherwise: all movements of the budget's own year,
/// into the actuals, for every site.
void completeInput(Environment& environment) {
  auto& budget = environment.budget();
  const auto& given = environment.options.properties;
  if (values::isBlank(budget.AnnoEsercizioMovimenti)) budget.AnnoEsercizioMovimenti = budget.AnnoEsercizio;
  if (values::isBlank(budget.ProgressivoEsercizioMovimenti))
    budget.ProgressivoEsercizioMovimenti = budget.ProgressivoEsercizio;
  if (budget.TipoMovimenti.empty()) budget.TipoMovimenti = "1 = 1";
  if (!given.contains("TipoDettaglioDestinazione")) budget.TipoDettaglioDestinazione = bdgDettaglioConsuntivo;
  if (values::isBlank(budget.DaData) || values::isBlank(budget.AData)) {
    values::Variant begin, end;
    budget.GetBdgDataInizioBdgDataFine(budget.TipoBudget, budget.SottoTipoBudget, budget.CodiceDitta,
                                       budget.AnnoEsercizio, budget.ProgressivoEsercizio, begin, end);
    environment.requireSuccess();
    if (values::isBlank(budget.DaData)) budget.DaData = begin;
    if (values::isBlank(budget.AData)) budget.AData = end;
  }
  completeSites(environment);
}

/// One run of the object for a card kind, watched and summed up.
/// @return what it changed.
std::vector<dati::AmountChange> elaborateKind(Environment& environment, int cardKind, dati::RunMode mode,
                                              SiteSummary& summary) {
  auto& budget = environment.budget();
  budget.BdgTipoScheda = cardKind;
  dati::WatchedRun run(budget, environment.connection(), {budgetScelto(budget), budget.TipoDettaglioDestinazione},
                       mode);
  const Progress progress(budget);
  // The cards of each site pass by as they are elaborated.
  const auto step = budget.eventi.StepProcess;
  budget.eventi.StepProcess = [&](values::Variant& done) {
    summary.addCard((*budget.RstBdgSchedeDaElaborare)["BU65_CODICE_CG31"].Value());
    if (step) step(done);
  };
  run(&CLSKORVAL::BdgElaSchede_Elaborazione);
  auto changes = run.changes();
  summary.addChanges(changes);
  return changes;
}

void elaborateCards(Environment& environment, bool dryRun) {
  requireBudget(environment);
  completeInput(environment);
  std::vector<int> cardKinds = {0, 1};
  const auto& chosen = environment.budget().BdgTipoScheda;
  if (!values::isBlank(chosen)) cardKinds = {values::toInt32(chosen)};
  const auto mode = dryRun ? dati::RunMode::Trial : dati::RunMode::Write;
  SiteSummary summary;
  std::vector<dati::AmountChange> changes;
  for (const int cardKind : cardKinds) {
    auto found = elaborateKind(environment, cardKind, mode, summary);
    std::ranges::move(found, std::back_inserter(changes));
  }
  environment.show(dryRun ? tableOf(changes) : summary.table());
}

}  // namespace

Command elaborateCardsCommand() {
  const auto dryRun = std::make_shared<bool>(false);
  return {
      "elaborate-cards",
      "Recompute the cards' values from accounting movements",
      "  bukorval elaborate-cards -d demo.db -t 4 -s 01 -y 2025 --dry-run\n"
      "Takes every site and both card kinds, the budget's own year and all movements unless options say otherwise:\n"
      "--CodiceSede, --BdgTipoScheda, --DaData, --AData, --TipoMovimenti, --TipoDataMovimenti 1 (competence),\n"
      "--DaScheda, --AScheda, --IsApplicaPercentuali, --TipoDettaglioDestinazione. One transaction per card kind.",
      {{"--dry-run", "show the differences it would write, and write nothing", dryRun.get()}},
      [dryRun](Environment& environment) { elaborateCards(environment, *dryRun); }};
}

}  // namespace bukorval::host
