#include <algorithm>
#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "dati/Cards.h"
#include "dati/Failure.h"
#include "dati/Movements.h"
#include "dati/Reconciliation.h"
#include "dati/WatchedRun.h"
#include "dati/Years.h"
#include "host/commands/Command.h"
#include "host/commands/DetailKind.h"
#include "host/commands/ReconciliationReport.h"
#include "host/commands/RunReport.h"
#include "host/environment/Errors.h"
#include "host/environment/Progress.h"
#include "host/environment/Selection.h"
#include "host/environment/Terminal.h"
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

/// The movement kinds (CG41_INDTIPOMOV) and the properties that take or leave them.
struct MovementKind {
  const char* property;
  const char* kind;
  bool byDefault;  ///< when the command line names none
  bool Proprieta::*given;
};
constexpr MovementKind kMovementKinds[] = {
    {"MovimentiConsolidati", "0", true, &Proprieta::MovimentiConsolidati},
    {"MovimentiDaConsolidare", "1", true, &Proprieta::MovimentiDaConsolidare},
    {"MovimentiPrevisionali", "2", false, &Proprieta::MovimentiPrevisionali},
};

/// TipoMovimenti from the kinds that are named, unless it is given itself.
void completeKinds(Environment& environment) {
  auto& budget = environment.budget();
  const auto& given = environment.options.properties;
  const bool named =
      std::ranges::any_of(kMovementKinds, [&](const auto& kind) { return given.contains(kind.property); });
  if (given.contains("TipoMovimenti")) {
    if (named) throw UsageError("--TipoMovimenti is a condition of its own: name no kinds of movement beside it");
    return;
  }
  std::string taken;
  for (const auto& [property, kind, byDefault, member] : kMovementKinds)
    if (named ? budget.*member : byDefault) taken.append(taken.empty() ? "" : ", ").append(kind);
  if (taken.empty()) throw UsageError("No kind of movement is left: name --MovimentiConsolidati or another one");
  budget.TipoMovimenti = "CG41_INDTIPOMOV IN (" + taken + ")";
}

/// Refuses what would only wipe amounts, or write them where no grid shows them.
void checkInput(CLSKORVAL& budget) {
  if (budget.TipoDataMovimenti != 0 && budget.TipoDataMovimenti != 1)
    throw UsageError("--TipoDataMovimenti is 0 (registration date) or 1 (competence), not " +
                     std::to_string(budget.TipoDataMovimenti));
  requireDetailKind(budget, budget.TipoDettaglioDestinazione);
}

/// What a month-end run means when the command line does not say otherwise: the real movements of the budget's own
/// year, into the actuals, for every site.
void completeInput(Environment& environment) {
  auto& budget = environment.budget();
  const auto& given = environment.options.properties;
  if (values::isBlank(budget.AnnoEsercizioMovimenti)) budget.AnnoEsercizioMovimenti = budget.AnnoEsercizio;
  if (values::isBlank(budget.ProgressivoEsercizioMovimenti))
    budget.ProgressivoEsercizioMovimenti = budget.ProgressivoEsercizio;
  completeKinds(environment);
  if (!given.contains("TipoDettaglioDestinazione")) budget.TipoDettaglioDestinazione = bdgDettaglioConsuntivo;
  checkInput(budget);
  completeCardRange(environment);
  completeSites(environment);
}

struct CardsOptions {
  bool dryRun = false, yes = false, strict = false;
};

/// Dates that are missing: from the budget's first day to the end of the month that has the latest movement. Further
/// months would become 0, and a forecast takes a 0 as the actual value, so they are written only after a question.
void completeDates(Environment& environment, const CardsOptions& options) {
  auto& budget = environment.budget();
  values::Variant begin, end;
  budget.GetBdgDataInizioBdgDataFine(budget.TipoBudget, budget.SottoTipoBudget, budget.CodiceDitta,
                                     budget.AnnoEsercizio, budget.ProgressivoEsercizio, begin, end);
  environment.requireSuccess();
  if (values::isBlank(budget.DaData)) budget.DaData = begin;
  const bool open = values::isBlank(budget.AData);
  if (open) budget.AData = end;
  if (values::isBlank(begin))
    dati::requireYear(*environment.connection(), budget.CodiceDitta, budget.AnnoEsercizio, budget.ProgressivoEsercizio);
  const auto from = values::toDate(budget.DaData), to = values::toDate(budget.AData);
  const auto last = dati::lastMovementDate(*environment.connection(),
                                           {budget.CodiceDitta, budget.AnnoEsercizioMovimenti,
                                            budget.ProgressivoEsercizioMovimenti, budget.TipoMovimenti, from, to});
  // Without any movement the first month alone keeps the run from the others.
  const auto closed = (last.isNothing() ? from : values::toDate(last)).lastOfMonth();
  if (open && closed < to) budget.AData = closed;
  const auto day = [](const values::Variant& date) { return values::toPlainText(date); };
  std::cerr << "From " << day(budget.DaData) << " to " << day(budget.AData)
            << (last.isNothing() ? ": no movement was registered there\n"
                                 : ": the latest movement is of " + day(last) + "\n");
  if (!open && closed < to && !options.dryRun)
    confirm("The months after " + day(closed) + " have no movements: they become 0 and replace the forecast. Go on?",
            options.yes);
}

using Range = std::pair<values::Variant, values::Variant>;

/// The dates, or two ranges where they cross the turn of the year in a budget by calendar months: the object takes
/// the months of such dates as the two ends of a range and would elaborate those between them.
std::vector<Range> rangesOf(CLSKORVAL& budget) {
  const auto first = budget.DaData, last = budget.AData;
  const bool calendar = budget.GetAnnoBudgetFiscaleSolare(budget.TipoBudget, budget.SottoTipoBudget) == bdgAnnoSolare;
  if (!calendar || values::isBlank(first) || values::isBlank(last)) return {{first, last}};
  const auto from = values::toDate(first), to = values::toDate(last);
  if (to.year() != from.year() + 1 || values::monthsBetween(from, to) > 11) return {{first, last}};
  return {{first, values::Date::FromYmd(from.year(), 12, 31)}, {values::Date::FromYmd(to.year(), 1, 1), last}};
}

/// Which part of the movements a run is about, by the command line.
dati::CardReconciler::Narrowing narrowingOf(const Environment& environment) {
  const auto& given = environment.options.properties;
  const auto either = [&](const char* a, const char* b) { return given.contains(a) || given.contains(b); };
  return {either("CodiceSede", "ElencoSedi"), either("DaScheda", "AScheda")};
}

/// The runs of the object, over both card kinds or the one that is selected.
/// @param onCard  for each card, when it has been done.
void elaborate(CLSKORVAL& budget, dati::WatchedRun& run, dati::CardReconciler& reconciler,
               const std::function<void(const ado::Recordset&)>& onCard) {
  std::vector<int> cardKinds = {0, 1};
  const auto chosen = budget.BdgTipoScheda;
  if (!values::isBlank(chosen)) cardKinds = {values::toInt32(chosen)};
  const Progress progress(budget);
  // The cards of each site pass by as they are elaborated.
  const auto step = budget.eventi.StepProcess;
  budget.eventi.StepProcess = [&](values::Variant& done) {
    onCard(*budget.RstBdgSchedeDaElaborare);
    if (step) step(done);
  };
  const auto ranges = rangesOf(budget);
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
  completeInput(environment);
  completeDates(environment, options);
  auto& budget = environment.budget();
  auto transaction = environment.transaction();
  if (!options.dryRun) requireWritable(environment, budgetScelto(budget));
  dati::WatchedRun run(budget, transaction, {budgetScelto(budget), budget.TipoDettaglioDestinazione});
  dati::CardReconciler reconciler(budget, narrowingOf(environment));
  SiteSummary summary;
  elaborate(budget, run, reconciler, [&](const ado::Recordset& cards) {
    reconciler.addCard(cards);
    summary.addCard(cards["BU65_CODICE_CG31"].Value());
  });
  const auto reconciliation = reconciler.reconcile(run.connection(), run.before(), run.after());
  const bool refused = options.strict && reconciliation.hasRest();
  const auto mode = options.dryRun || refused ? dati::RunMode::Trial : dati::RunMode::Write;
  transaction.end(mode);
  const auto changes = run.changes();
  summary.addChanges(changes);
  environment.show({{},
                    {{"Cards", mode == dati::RunMode::Trial ? tableOf(changes) : summary.table()},
                     {"Landed nowhere", unlandedTable(reconciliation)},
                     {"Reconciliation", totalsTable(reconciliation)}}});
  if (refused)
    throw dati::Refused("Not every movement landed on a card, to the cent: with --strict nothing was written");
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
